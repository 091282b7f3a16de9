#pragma once
// Text to tree. Nothing is looked up here; names and kinds are the resolver's.

#include <string_view>

#include "tsql/ast/statement.h"

namespace tarlo::tsql {

// Throws StatementError (Syntax or Limit) with the position and what was expected.
ast::Batch parse(std::string_view sql);

}  // namespace tarlo::tsql
