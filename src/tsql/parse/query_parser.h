#pragma once
// SELECT, alone or united.

#include "tsql/ast/query.h"
#include "tsql/parse/token_stream.h"

namespace tarlo::tsql {

// The next token is SELECT.
ast::Query parseQuery(TokenStream& tokens);
// The comma list behind FROM.
std::vector<ast::FromItem> parseFrom(TokenStream& tokens);
// ASC or DESC, both optional: whether it is DESC.
bool parseDescending(TokenStream& tokens);

}  // namespace tarlo::tsql
