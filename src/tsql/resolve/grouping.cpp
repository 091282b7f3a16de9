// What a query with GROUP BY, HAVING or aggregates may say outside its aggregates.

#include <fmt/format.h>

#include <algorithm>

#include "tsql/error.h"
#include "tsql/resolve/children.h"
#include "tsql/resolve/functions.h"
#include "tsql/resolve/resolver.h"
#include "tsql/resolve/rules.h"

namespace tarlo::tsql {
namespace {

using ast::Expr;

class GroupChecker {
 public:
  explicit GroupChecker(const std::vector<Expr>& groupBy) : groupBy_(groupBy) {}

  void operator()(const Expr& expr) {
    if (depth_ == 0 && (isGrouped(expr) || isAggregate(expr))) return;
    if (const auto* column = std::get_if<ast::ColumnRef>(&expr.node)) return check(expr, *column);
    forEachChild(expr, *this);
  }
  void operator()(const ast::Condition& condition) { forEachChild(condition, *this); }
  void operator()(const ast::Query& query) {
    ++depth_;
    forEachChild(query, *this);
    --depth_;
  }

 private:
  bool isGrouped(const Expr& expr) const {
    return std::any_of(groupBy_.begin(), groupBy_.end(),
                       [&](const Expr& item) { return sameExpression(item, expr); });
  }

  static bool isAggregate(const Expr& expr) {
    const auto* call = std::get_if<ast::FunctionCall>(&expr.node);
    if (!call) return false;
    const Function* function = findFunction(call->name);
    return function && function->isAggregate;
  }

  // Inside a sub-query a column of this query must be grouped as well.
  void check(const Expr& expr, const ast::ColumnRef& column) const {
    if (column.level != depth_) return;
    if (depth_ > 0) {
      Expr here = expr;
      std::get<ast::ColumnRef>(here.node).level = 0;
      if (isGrouped(here)) return;
    }
    throw StatementError(
        Refusal::Rule, expr.position,
        fmt::format("column {} must stand in GROUP BY or in an aggregate", column.name));
  }

  const std::vector<Expr>& groupBy_;
  int depth_ = 0;
};

}  // namespace

void checkGroupItem(const ast::Expr& item) {
  if (holdsSubquery(item)) {
    throw StatementError(Refusal::Rule, item.position, "a sub-query cannot stand in GROUP BY");
  }
  bool holdsColumn = false;
  const auto look = [&](const Expr& expr) {
    const auto* column = std::get_if<ast::ColumnRef>(&expr.node);
    holdsColumn = holdsColumn || (column && column->level == 0);
  };
  forEachExpr(item, Subqueries::Skip, look);
  if (!holdsColumn) {
    throw StatementError(Refusal::Rule, item.position,
                         "an item of GROUP BY must hold a column of the query's tables");
  }
}

void checkGrouping(ast::QuerySpec& spec, std::span<ast::OrderItem> orderBy) {
  GroupChecker checker(spec.groupBy);
  for (Expr& item : spec.groupBy) fixLiterals(item);
  for (ast::SelectItem& item : spec.items) {
    fixLiterals(*item.expr);
    checker(*item.expr);
  }
  if (spec.having) {
    fixLiterals(*spec.having);
    checker(*spec.having);
  }
  for (ast::OrderItem& item : orderBy) {
    if (item.item >= 0) continue;
    fixLiterals(item.expr);
    checker(item.expr);
  }
}

}  // namespace tarlo::tsql
