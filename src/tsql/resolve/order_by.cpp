// ORDER BY, by titles, numbers and expressions.

#include <fmt/format.h>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/resolve/children.h"
#include "tsql/resolve/functions.h"
#include "tsql/resolve/literal_value.h"
#include "tsql/resolve/rules.h"

namespace tarlo::tsql {
namespace {

class OrderResolver {
 public:
  OrderResolver(const Context& context, ast::Query& query, const std::vector<ResultColumn>& columns)
      : context_(context), query_(query), columns_(columns) {}

  void operator()(ast::OrderItem& item) {
    ast::Expr& expr = item.expr;
    item.item = byNumber(expr);
    if (item.item < 0) item.item = byTitle(expr);
    if (item.item < 0) item.item = byExpression(expr);
    if (item.item >= 0) {
      expr.type = columns_[static_cast<std::size_t>(item.item)].type;
      expr.wanted = expr.type;
    }
  }

 private:
  bool isUnion() const { return query_.parts.size() > 1; }
  std::vector<ast::SelectItem>& items() const { return query_.parts[0].items; }

  int byNumber(ast::Expr& expr) const {
    auto* literal = std::get_if<ast::Literal>(&expr.node);
    if (!literal || literal->literalClass != ast::LiteralClass::Integer) return -1;
    literal->fixed = true;
    const auto number = parseInteger(literal->text);
    if (!number || *number < 1 || *number > static_cast<std::int64_t>(columns_.size())) {
      throw StatementError(
          Refusal::Rule, expr.position,
          fmt::format("ORDER BY {}: there are {} columns", literal->text, columns_.size()));
    }
    return static_cast<int>(*number) - 1;
  }

  // A title comes before a column of the tables that has the same name.
  int byTitle(const ast::Expr& expr) const {
    const auto* column = std::get_if<ast::ColumnRef>(&expr.node);
    if (!column || !column->table.empty()) return -1;
    int found = -1;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (!text::equalsNoCase(columns_[i].title, column->name)) continue;
      if (found >= 0 && !sameItems(static_cast<std::size_t>(found), i)) {
        throw StatementError(Refusal::Name, expr.position,
                             fmt::format("ORDER BY {} is ambiguous", column->name));
      }
      if (found < 0) found = static_cast<int>(i);
    }
    return found;
  }

  bool sameItems(std::size_t a, std::size_t b) const {
    return !isUnion() && sameExpression(*items()[a].expr, *items()[b].expr);
  }

  int byExpression(ast::Expr& expr) const {
    if (isUnion()) {
      throw StatementError(Refusal::Rule, expr.position,
                           "ORDER BY of a UNION takes titles and numbers of its columns only");
    }
    resolveExpr(context_, expr);
    checkNotConstant(expr);
    return query_.parts[0].distinct ? distinctItem(expr) : -1;
  }

  static void checkNotConstant(const ast::Expr& expr) {
    bool varies = holdsSubquery(expr);
    const auto look = [&](const ast::Expr& part) {
      varies = varies || std::holds_alternative<ast::ColumnRef>(part.node);
      if (const auto* call = std::get_if<ast::FunctionCall>(&part.node)) {
        varies = varies || findFunction(call->name)->isAggregate;
      }
    };
    forEachExpr(expr, Subqueries::Skip, look);
    if (varies) return;
    throw StatementError(Refusal::Rule, expr.position, "ORDER BY a constant");
  }

  // Which item it is depends on the literals of both.
  int distinctItem(ast::Expr& expr) const {
    fixLiterals(expr);
    for (std::size_t i = 0; i < items().size(); ++i) {
      fixLiterals(*items()[i].expr);
      if (sameExpression(*items()[i].expr, expr)) return static_cast<int>(i);
    }
    throw StatementError(Refusal::Rule, expr.position,
                         "with DISTINCT, ORDER BY takes selected expressions only");
  }

  const Context& context_;
  ast::Query& query_;
  const std::vector<ResultColumn>& columns_;
};

}  // namespace

void resolveOrderBy(const Context& context, ast::Query& query,
                    const std::vector<ResultColumn>& columns) {
  OrderResolver resolver(context, query, columns);
  for (ast::OrderItem& item : query.orderBy) resolver(item);
}

}  // namespace tarlo::tsql
