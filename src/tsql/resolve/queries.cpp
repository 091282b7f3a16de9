// SELECT and UNION.

#include <fmt/format.h>

#include <algorithm>
#include <span>

#include "tsql/error.h"
#include "tsql/resolve/conversion.h"
#include "tsql/resolve/literal_value.h"
#include "tsql/resolve/rules.h"

namespace tarlo::tsql {
namespace {

using ast::Query;
using ast::QuerySpec;
using ast::SelectItem;

// The columns of `*` or `T.*`, as items of their own.
class StarExpander {
 public:
  explicit StarExpander(const Scope& scope) : scope_(scope) {}

  std::vector<SelectItem> operator()(std::vector<SelectItem> items) const {
    const auto isStar = [](const SelectItem& item) { return !item.expr; };
    if (std::none_of(items.begin(), items.end(), isStar)) return items;
    std::vector<SelectItem> expanded;
    for (SelectItem& item : items) {
      if (item.expr) {
        expanded.push_back(std::move(item));
      } else {
        expand(item, expanded);
      }
    }
    return expanded;
  }

 private:
  void expand(const SelectItem& star, std::vector<SelectItem>& into) const {
    const auto& sources = scope_.sources();
    if (!star.starTable.empty()) {
      return addColumns(star, sources[scope_.findSource(star.starTable, star.position)], into);
    }
    if (sources.empty()) throw StatementError(Refusal::Rule, star.position, "* needs a FROM");
    for (const Source& source : sources) addColumns(star, source, into);
  }

  static void addColumns(const SelectItem& star, const Source& source,
                         std::vector<SelectItem>& into) {
    for (std::size_t i = 0; i < source.size(); ++i) {
      SelectItem item;
      item.position = star.position;
      item.expr.emplace();
      item.expr->position = star.position;
      item.expr->node = ast::ColumnRef{source.exposedName(), source.columnName(i)};
      into.push_back(std::move(item));
    }
  }

  const Scope& scope_;
};

std::string titleOf(const SelectItem& item) {
  if (!item.alias.empty()) return item.alias;
  const auto* column = std::get_if<ast::ColumnRef>(&item.expr->node);
  return column ? column->name : std::string();
}

// One SELECT, its clauses in the order in which they are evaluated.
class SpecResolver {
 public:
  SpecResolver(BatchContext& batch, const Scope* outer, QuerySpec& spec)
      : batch_(batch), scope_(outer), spec_(spec) {}

  std::vector<ResultColumn> resolve() {
    resolveTop();
    resolveFrom(batch_, spec_, scope_);
    spec_.items = StarExpander(scope_)(std::move(spec_.items));
    if (spec_.where) resolveCondition(context("WHERE"), *spec_.where);
    for (ast::Expr& item : spec_.groupBy) {
      resolveExpr(context("GROUP BY"), item);
      checkGroupItem(item);
    }
    std::vector<ResultColumn> columns;
    columns.reserve(spec_.items.size());
    for (SelectItem& item : spec_.items) {
      resolveExpr(context({}), *item.expr);
      columns.push_back({titleOf(item), item.expr->type});
    }
    if (spec_.having) resolveCondition(context({}), *spec_.having);
    return columns;
  }

  void resolveOrder(Query& query, const std::vector<ResultColumn>& columns) {
    resolveOrderBy(context({}), query, columns);
  }

  void checkGroups(std::span<ast::OrderItem> orderBy) const {
    const bool grouped = !spec_.groupBy.empty() || spec_.having || sawAggregate_;
    if (grouped) checkGrouping(spec_, orderBy);
  }

 private:
  Context context(std::string_view noAggregatesIn) {
    return {batch_, scope_, noAggregatesIn, &sawAggregate_};
  }

  void resolveTop() {
    if (!spec_.top) return;
    auto* literal = std::get_if<ast::Literal>(&spec_.top->node);
    if (!literal || literal->literalClass != ast::LiteralClass::Integer ||
        !parseInteger(literal->text)) {
      throw StatementError(Refusal::Rule, spec_.top->position, "TOP needs a whole number");
    }
    literal->fixed = true;
    spec_.top->type = spec_.top->wanted = kIntType;
  }

  BatchContext& batch_;
  Scope scope_;
  QuerySpec& spec_;
  bool sawAggregate_ = false;
};

void unite(std::vector<ResultColumn>& columns, const std::vector<ResultColumn>& more,
           Position position) {
  if (columns.size() != more.size()) {
    throw StatementError(
        Refusal::Rule, position,
        fmt::format("the queries of a UNION have {} and {} columns", columns.size(), more.size()));
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    columns[i].type = commonType(columns[i].type, more[i].type);
  }
}

void resolvePaging(ast::Query& query) {
  if (!query.offset) return;
  if (query.parts.size() == 1 && query.parts[0].top) {
    throw StatementError(Refusal::Rule, query.offset->position, "OFFSET cannot stand with TOP");
  }
  for (ast::Expr* expr : {&*query.offset, query.fetch ? &*query.fetch : nullptr}) {
    if (expr == nullptr) continue;
    const auto* literal = std::get_if<ast::Literal>(&expr->node);
    if (!literal || !parseInteger(literal->text)) {
      throw StatementError(Refusal::Rule, expr->position, "paging needs whole numbers");
    }
    expr->type = expr->wanted = kIntType;
  }
}

}  // namespace

std::vector<ResultColumn> resolveQuery(BatchContext& batch, const Scope* outer, ast::Query& query,
                                       QueryUse use) {
  const bool single = query.parts.size() == 1;
  if (use == QueryUse::Nested && !query.orderBy.empty() && !query.offset &&
      !(single && query.parts[0].top)) {
    throw StatementError(Refusal::Rule, query.orderBy[0].expr.position,
                         "ORDER BY in a sub-query needs TOP or OFFSET");
  }
  resolvePaging(query);
  std::vector<ResultColumn> columns;
  for (std::size_t i = 0; i < query.parts.size(); ++i) {
    SpecResolver part(batch, outer, query.parts[i]);
    auto own = part.resolve();
    if (single) part.resolveOrder(query, own);
    // In place, never a copy: literals of ORDER BY are marked there.
    part.checkGroups(single ? std::span(query.orderBy) : std::span<ast::OrderItem>());
    if (i == 0) {
      columns = std::move(own);
    } else {
      unite(columns, own, query.parts[i].position);
    }
  }
  if (single) return columns;
  for (std::size_t i = 0; i < columns.size(); ++i) wantColumn(query, i, columns[i].type);
  const Scope noTables(outer);
  resolveOrderBy({batch, noTables, "ORDER BY of a UNION"}, query, columns);
  return columns;
}

void wantColumn(ast::Query& query, std::size_t column, Type type, std::string_view writtenInto) {
  for (QuerySpec& part : query.parts) want(*part.items[column].expr, type, writtenInto);
}

}  // namespace tarlo::tsql
