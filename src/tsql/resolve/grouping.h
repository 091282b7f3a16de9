#pragma once
// What a query with GROUP BY, HAVING or aggregates may say outside its aggregates.

#include <span>

#include "tsql/ast/query.h"

namespace tarlo::tsql {

// A GROUP BY item must hold a column of this query, and no sub-query.
void checkGroupItem(const ast::Expr& item);

// Every column of this query in items, HAVING and ORDER BY must stand in an aggregate or in an
// expression of the GROUP BY list. Keeps all literals of these clauses in the text, because which
// expressions match depends on them.
void checkGrouping(const ast::QuerySpec& spec, std::span<const ast::OrderItem> orderBy);

}  // namespace tarlo::tsql
