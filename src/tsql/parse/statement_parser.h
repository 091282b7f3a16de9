#pragma once
// One statement of a batch.

#include "tsql/ast/statement.h"
#include "tsql/parse/token_stream.h"

namespace tarlo::tsql {

ast::Statement parseStatement(TokenStream& tokens);
// DELETE, which parseStatement does not know.
ast::Statement parseDelete(TokenStream& tokens);

}  // namespace tarlo::tsql
