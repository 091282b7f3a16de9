#pragma once
// The table of operations: the single list that the component, the command line, the host and the
// documentation read.

#include <span>
#include <string_view>

#include "frame/page.h"

namespace tarlo::component {

enum class OperationKind { Page, Service };
enum class ErrorMode { Raise, ResumeNext };

struct Operation {
  std::string_view name;    // as spelled by its authors; matched without regard to case
  std::string_view folder;  // the subsystem it lives in
  OperationKind kind;
  ErrorMode errors;
  std::string_view argumentNames;                          // comma-joined, "" for none
  std::size_t arity;                                       // taken from the function's type
  Variant (*invoke)(Page&, std::span<Variant> arguments);  // `arguments` has `arity` elements
};

// In alphabetical order of the folded names.
std::span<const Operation> operations();
// Nothing when there is none of that name.
const Operation* findOperation(std::string_view name);

}  // namespace tarlo::component
