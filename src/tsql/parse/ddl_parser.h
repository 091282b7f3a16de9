#pragma once
// CREATE TABLE, CREATE INDEX and ALTER TABLE ... ADD.

#include "tsql/ast/statement.h"
#include "tsql/parse/token_stream.h"

namespace tarlo::tsql {

// The next token is CREATE.
ast::Statement parseCreate(TokenStream& tokens);
// The next token is ALTER.
ast::Statement parseAlter(TokenStream& tokens);

}  // namespace tarlo::tsql
