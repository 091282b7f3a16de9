#pragma once
// CREATE TABLE and CREATE INDEX.

#include "tsql/ast/statement.h"
#include "tsql/parse/token_stream.h"

namespace tarlo::tsql {

// The next token is CREATE.
ast::Statement parseCreate(TokenStream& tokens);

}  // namespace tarlo::tsql
