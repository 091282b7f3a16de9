#include "siblings/grid_statement.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "database/error.h"
#include "siblings/grid_definition.h"
#include "tsql/error.h"
#include "tsql/parse/parser.h"
#include "tsql/print/tsql_printer.h"
#include "tsql/resolve/children.h"
#include "tsql/resolve/functions.h"
#include "tsql/resolve/resolver.h"

namespace tarlo::siblings {
namespace {

namespace ast = tsql::ast;
using ast::Condition;
using ast::Expr;
using ast::Query;
using ast::QuerySpec;

constexpr std::size_t kMostDigits = 15;  // of a number to match: as many as a double holds

// What the front end refuses reaches pages as the database error that it is everywhere else.
template <class Step>
auto asDatabaseError(Step step) {
  try {
    return step();
  } catch (const tsql::StatementError& error) {
    throw database::refusedStatement(error);
  }
}

[[noreturn]] void refuse(tsql::Position position, std::string_view message) {
  throw tsql::StatementError(tsql::Refusal::Syntax, position, message);
}

Query queryOf(ast::Batch batch) {
  auto* select =
      batch.statements.size() == 1 ? std::get_if<ast::Select>(&batch.statements[0].node) : nullptr;
  if (select == nullptr) refuse({}, "a grid shows the rows of one SELECT");
  return std::move(select->query);
}

ast::Batch batchOf(Query query) {
  ast::Batch batch;
  batch.statements.push_back({{}, ast::Select{std::move(query)}});
  return batch;
}

std::string textOf(Query query) {
  return tsql::printTsql(batchOf(std::move(query)));
}

Condition parsedCondition(std::string_view text) {
  const Query query = queryOf(tsql::parse(fmt::format("select 1 where {}", text)));
  const QuerySpec& spec = query.parts[0];
  const bool isCondition = query.parts.size() == 1 && query.orderBy.empty() &&
                           spec.groupBy.empty() && !spec.having && spec.where;
  if (!isCondition) refuse({}, "expected a condition");
  return *spec.where;
}

std::vector<ast::OrderItem> parsedOrder(std::string_view text) {
  const Query query = queryOf(tsql::parse(fmt::format("select 1 order by {}", text)));
  if (query.offset) refuse({}, "expected an order");
  return query.orderBy;
}

Condition joined(ast::LogicOp op, Condition left, Condition right) {
  return {{}, ast::Logical{op, std::move(left), std::move(right)}};
}

void add(std::optional<Condition>& to, ast::LogicOp op, Condition condition) {
  to = to ? joined(op, std::move(*to), std::move(condition)) : std::move(condition);
}

Expr integer(std::int64_t value) {
  return {{}, ast::Literal{ast::LiteralClass::Integer, fmt::format("{}", value)}, {}, {}};
}

bool isGrouped(const QuerySpec& spec) {
  bool found = !spec.groupBy.empty() || spec.having.has_value();
  const auto look = [&](const Expr& expr) {
    const auto* call = std::get_if<ast::FunctionCall>(&expr.node);
    const tsql::Function* function = call == nullptr ? nullptr : tsql::findFunction(call->name);
    found = found || (function != nullptr && function->isAggregate);
  };
  for (const ast::SelectItem& item : spec.items) {
    tsql::forEachExpr(*item.expr, tsql::Subqueries::Skip, look);
  }
  return found;
}

// The pattern finds the text as it stands: each wildcard in it becomes a class of itself.
std::string containsPattern(std::string_view text) {
  std::string pattern = "%";
  for (const char c : text) {
    if (c == '[' || c == '%' || c == '_') {
      pattern += {'[', c, ']'};
    } else {
      pattern += c;
    }
  }
  return pattern + "%";
}

// A date is searched as the grid shows it.
Expr searchedText(const Expr& expr) {
  if (expr.type.kind != tsql::Kind::Date) return expr;
  constexpr int kLength = 19;
  constexpr int kStyle = 120;
  return {{}, ast::Cast{expr, "nvarchar", {kLength}, true, kStyle}, {}, {}};
}

// Whether a value of the kind can hold the text: most searches need not look at numbers and dates
// at all.
bool canHold(tsql::Kind kind, std::string_view text) {
  switch (kind) {
    case tsql::Kind::Null:
      return false;
    case tsql::Kind::Text:
      return true;
    case tsql::Kind::Date:
      return text.find_first_not_of("0123456789-: ") == std::string_view::npos;
    default:
      return text.find_first_not_of("0123456789-+.eE ") == std::string_view::npos;
  }
}

std::optional<Condition> searchCondition(const QuerySpec& spec, std::size_t shown,
                                         std::string_view text) {
  const Expr pattern{{}, ast::Literal{ast::LiteralClass::Text, containsPattern(text)}, {}, {}};
  std::optional<Condition> any;
  for (std::size_t i = 1; i < spec.items.size() && i <= shown; ++i) {
    const Expr& expr = *spec.items[i].expr;
    if (!canHold(expr.type.kind, text)) continue;
    add(any, ast::LogicOp::Or, {{}, ast::Like{searchedText(expr), pattern}});
  }
  return any;
}

// Groups are searched by what they show, behind the grouping.
void addSearch(QuerySpec& spec, std::size_t shown, std::string_view text) {
  auto condition = searchCondition(spec, shown, text);
  if (!condition) condition = parsedCondition("1 = 0");
  add(isGrouped(spec) ? spec.having : spec.where, ast::LogicOp::And, std::move(*condition));
}

// The value as a literal of the column's kind; nothing when it can be none of its values.
std::optional<Expr> literalFor(tsql::Kind kind, const std::string& value) {
  const bool isText = kind == tsql::Kind::Text || kind == tsql::Kind::Date;
  if (isText) return Expr{{}, ast::Literal{ast::LiteralClass::Text, value}, {}, {}};
  const bool isNegative = value.starts_with('-');
  const std::string digits = value.substr(isNegative ? 1 : 0);
  const bool isNumber = !digits.empty() && digits.size() <= kMostDigits && digits != "." &&
                        digits.find_first_not_of("0123456789.") == std::string::npos &&
                        std::ranges::count(digits, '.') <= 1;
  if (!isNumber) return {};
  const bool isWhole = digits.find('.') == std::string::npos;
  const auto literal = isWhole ? ast::LiteralClass::Integer : ast::LiteralClass::Decimal;
  Expr number{{}, ast::Literal{literal, digits}, {}, {}};
  if (!isNegative) return number;
  return Expr{{}, ast::Unary{ast::UnaryOp::Minus, std::move(number)}, {}, {}};
}

void addMatch(QuerySpec& spec, const GridMatch& match) {
  std::optional<Condition> condition;
  if (match.column > 0 && match.column <= spec.items.size()) {
    const Expr& expr = *spec.items[match.column - 1].expr;
    if (auto literal = literalFor(expr.type.kind, match.value)) {
      condition = {{}, ast::Comparison{ast::ComparisonOp::Equal, expr, std::move(*literal), {}}};
    }
  }
  if (!condition) condition = parsedCondition("1 = 0");
  add(isGrouped(spec) ? spec.having : spec.where, ast::LogicOp::And, std::move(*condition));
}

ast::SelectItem item(Expr expr) {
  ast::SelectItem result;
  result.expr = std::move(expr);
  return result;
}

// The query as a table of its own, with a title for each column, since titles may repeat or be
// missing.
QuerySpec over(Query query) {
  auto& items = query.parts[0].items;
  for (std::size_t i = 0; i < items.size(); ++i) items[i].alias = fmt::format("c{}", i + 1);
  QuerySpec spec;
  spec.from.push_back({{{}, ast::DerivedTable{std::move(query), "q"}}, {}});
  return spec;
}

}  // namespace

GridStatement::GridStatement(std::string_view sql, std::string_view orderBy, std::size_t shown,
                             tsql::Catalogue& catalogue)
    : shown_(shown) {
  asDatabaseError([&] {
    ast::Batch batch = tsql::parse(sql);
    queryOf(batch);
    for (auto& column : tsql::resolve(batch, catalogue).columns) {
      titles_.push_back(std::move(column.title));
    }
    query_ = queryOf(std::move(batch));
    ownOrder_ = query_.orderBy;
  });
  if (!query_.parts[0].top && !query_.offset) query_.orderBy.clear();
  try {
    if (bareCondition(orderBy).empty()) return;
    Query ordered = query_;
    ordered.orderBy = parsedOrder(orderBy);
    ast::Batch batch = batchOf(std::move(ordered));
    tsql::resolve(batch, catalogue);
    ownOrder_ = queryOf(std::move(batch)).orderBy;
  } catch (const tsql::StatementError&) {
    // A UNION takes titles only, and pages give it columns: their lists come by the row's id.
  }
}

Query GridStatement::filtered(const GridFilter& filter) const {
  Query query = query_;
  for (QuerySpec& part : query.parts) {
    for (const std::string& condition : filter.conditions) {
      const std::string_view bare = bareCondition(condition);
      if (!bare.empty()) add(part.where, ast::LogicOp::And, parsedCondition(bare));
    }
    if (!filter.search.empty()) addSearch(part, shown_, filter.search);
    for (const GridMatch& match : filter.matches) addMatch(part, match);
  }
  return query;
}

bool GridStatement::isRowId(const Expr& expr) const {
  if (const auto* literal = std::get_if<ast::Literal>(&expr.node)) return literal->text == "1";
  if (const auto* column = std::get_if<ast::ColumnRef>(&expr.node)) {
    if (column->table.empty() && tsql::printTsql(expr) == "[" + titles_[0] + "]") return true;
  }
  return query_.parts.size() == 1 && tsql::sameExpression(*query_.parts[0].items[0].expr, expr);
}

// Rows that compare equal must not change places between two pages. The id goes the way of the last
// item, so that one index can serve both.
void GridStatement::addTieBreaker(std::vector<ast::OrderItem>& items) const {
  const Expr& id = *query_.parts[0].items[0].expr;
  const bool isConstant = std::holds_alternative<ast::Literal>(id.node);
  for (const ast::OrderItem& item : items) {
    if (isConstant || isRowId(item.expr)) return;
  }
  const bool descending = !items.empty() && items.back().descending;
  const bool byFirstShown = isConstant && titles_.size() > 1;
  items.push_back({integer(byFirstShown ? 2 : 1), descending});
}

std::vector<ast::OrderItem> GridStatement::order(const GridSort& sort) const {
  std::vector<ast::OrderItem> items = ownOrder_;
  if (sort.column > 0 && sort.column <= titles_.size()) {
    items = {{integer(static_cast<std::int64_t>(sort.column)), sort.descending}};
  }
  addTieBreaker(items);
  return items;
}

std::string GridStatement::page(const GridFilter& filter, const GridSort& sort, std::int64_t offset,
                                std::int64_t count) const {
  return asDatabaseError([&] {
    Query query = filtered(filter);
    // OFFSET cannot stand with TOP: what TOP leaves is a table of its own then.
    if (query.parts[0].top || query.offset) {
      Query outer;
      outer.parts.push_back(over(std::move(query)));
      for (std::size_t i = 0; i < titles_.size(); ++i) {
        const ast::ColumnRef column{"", fmt::format("c{}", i + 1)};
        outer.parts[0].items.push_back(item({{}, column, {}, {}}));
      }
      query = std::move(outer);
      query.orderBy = {{integer(std::max<std::int64_t>(1, static_cast<std::int64_t>(sort.column))),
                        sort.descending}};
    } else {
      query.orderBy = order(sort);
    }
    query.offset = integer(offset);
    query.fetch = integer(count);
    return textOf(std::move(query));
  });
}

std::string GridStatement::all(const GridFilter& filter, const GridSort& sort) const {
  return asDatabaseError([&] {
    Query query = filtered(filter);
    if (!query.parts[0].top && !query.offset) query.orderBy = order(sort);
    return textOf(std::move(query));
  });
}

std::string GridStatement::count(const GridFilter& filter) const {
  return asDatabaseError([&] {
    Query query = filtered(filter);
    const QuerySpec& first = query.parts[0];
    const bool isPlain = query.parts.size() == 1 && !first.distinct && !first.top &&
                         !query.offset && !isGrouped(first);
    Query counted;
    counted.parts.push_back(isPlain ? first : over(std::move(query)));
    ast::FunctionCall count;
    count.name = "COUNT";
    count.star = true;
    counted.parts[0].items.clear();
    counted.parts[0].items.push_back(item({{}, std::move(count), {}, {}}));
    return textOf(std::move(counted));
  });
}

}  // namespace tarlo::siblings
