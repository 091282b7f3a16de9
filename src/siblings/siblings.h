#pragma once
// The components that pages create beside TarloQuery: by program id, and by address where their
// browser side asks for data.

#include <memory>
#include <span>
#include <string_view>

#include "frame/page.h"
#include "variant/object.h"

namespace tarlo::siblings {

struct ProgId {
  std::string_view name;  // "TarloTable.table"; matched without regard to case
  std::shared_ptr<Object> (*make)();
};
std::span<const ProgId> progIds();

// `/<component>.Zembra?action=<name>`: what the browser side of a component asks the server for.
// Runs like a page operation: origin checked, and for those only whom its row names.
struct PageOperation {
  std::string_view component;  // "TarloTable"
  std::string_view name;
  void (*run)(Page&);
  frame::Access access;
  database::StatementRights rights;  // of the statements that it puts together itself
};
std::span<const PageOperation> pageOperations();

}  // namespace tarlo::siblings
