#pragma once
// SELECT: its clauses in the order in which names become visible, and UNION over several.

#include <vector>

#include "tsql/ast/query.h"
#include "tsql/resolve/context.h"

namespace tarlo::tsql {

// Nested: a sub-query or derived table, whose rows have no order of their own.
enum class QueryUse { Statement, Nested };

// Titles and types of the query's columns. `outer`: the scope of the query round it, or nullptr.
std::vector<ResultColumn> resolveQuery(BatchContext& batch, const Scope* outer, ast::Query& query,
                                       QueryUse use);

// Converts one column of a resolved query, in all its parts.
void wantColumn(ast::Query& query, std::size_t column, Type type,
                std::string_view writtenInto = {});

// Fills the scope from FROM and resolves its ON conditions.
void resolveFrom(BatchContext& batch, ast::QuerySpec& spec, Scope& scope);

// ORDER BY of a query of one part, over its items, then its tables; of a UNION, over its titles.
void resolveOrderBy(const Context& context, ast::Query& query,
                    const std::vector<ResultColumn>& columns);

}  // namespace tarlo::tsql
