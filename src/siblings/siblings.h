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
// Runs like a page operation: signed in, origin checked.
struct PageOperation {
  std::string_view component;  // "TarloTable"
  std::string_view name;
  void (*run)(Page&);
  bool isForDesigners = false;  // only the wizard's pages ask
};
std::span<const PageOperation> pageOperations();

}  // namespace tarlo::siblings
