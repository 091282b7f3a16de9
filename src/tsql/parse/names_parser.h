#pragma once
// Names with points in them.

#include "tsql/ast/query.h"
#include "tsql/parse/token_stream.h"

namespace tarlo::tsql {

// F, T.F, dbo.T.F.
ast::ColumnRef parseColumnRef(TokenStream& tokens);
// T or dbo.T, without alias.
ast::TableName parseTableName(TokenStream& tokens);
// (a, b): one name or more in parentheses.
std::vector<std::string> parseColumnNames(TokenStream& tokens);

}  // namespace tarlo::tsql
