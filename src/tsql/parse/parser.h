#pragma once
// Text to tree. Nothing is looked up here; names and kinds are the resolver's.

#include <string_view>

#include "tsql/ast/statement.h"

namespace tarlo::tsql {

// Whether DELETE is a statement of the language. It is one for the server's own housekeeping only;
// for everybody else the word begins nothing.
enum class Deletes { Unknown, Known };

// Throws StatementError (Syntax or Limit) with the position and what was expected.
ast::Batch parse(std::string_view sql, Deletes deletes = Deletes::Unknown);

}  // namespace tarlo::tsql
