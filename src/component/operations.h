#pragma once
// The table of operations: the single list that the component, the command line, the host and the
// documentation read. What an operation is called, who may call it and which tables its statements
// touch stand here and nowhere else.

#include <span>
#include <string_view>
#include <utility>

#include "frame/statement_scope.h"

namespace tarlo::component {

enum class OperationKind { Page, Service };
enum class ErrorMode { Raise, ResumeNext };

struct Operation {
  std::string_view name;    // as spelled by its authors; matched without regard to case
  std::string_view folder;  // the subsystem it lives in
  OperationKind kind;
  ErrorMode errors;
  std::string_view argumentNames;  // comma-joined, "" for none
  std::size_t arity;               // taken from the function's type
  // Who may call it, at every door: by address, from the command line, through another component.
  frame::Access access;
  // What the statements that it puts together itself may touch. Statements of designers and stored
  // ones have narrower rights of their own, and its row of the operation log needs none.
  database::StatementRights rights;
  Variant (*invoke)(Page&, std::span<Variant> arguments);  // `arguments` has `arity` elements
};

// Runs a piece of work on the page as a row says it: its statements are held to these rights, and
// what it hands out for later goes to those only who have this access. Whether the caller has it is
// the question of the door that the call comes through.
template <class Work>
auto runAs(Page& page, const frame::Access& access, const database::StatementRights& rights,
           Work&& work) {
  const frame::StatementScope scope(page, rights);
  const frame::AccessScope accessScope(page, access);
  return std::forward<Work>(work)();
}
// The operation, as its row says it. `arguments` has `arity` elements.
Variant run(Page& page, const Operation& operation, std::span<Variant> arguments);

// Whether a call, or one with these rights, changes anything. What the server notes of the lists
// that a session has drawn does not count.
bool changesData(const database::StatementRights& rights);
bool changesData(const Operation& operation);

// In alphabetical order of the folded names.
std::span<const Operation> operations();
// Nothing when there is none of that name.
const Operation* findOperation(std::string_view name);

}  // namespace tarlo::component
