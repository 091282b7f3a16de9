#include "tsql/print/select.h"

#include <fmt/format.h>

#include <algorithm>

#include "tsql/resolve/children.h"
#include "tsql/resolve/literal_value.h"

namespace tarlo::tsql::print {
namespace {

using ast::Expr;
using ast::QuerySpec;

// Whether the order among the values has a place for NULL: not for the column of a key.
bool mayBeNull(Writer& writer, const Expr& expr) {
  const auto* ref = std::get_if<ast::ColumnRef>(&expr.node);
  const auto& sources = writer.scopes().back().sources;
  if (ref == nullptr || ref->level != 0 || sources.size() != 1 || !sources[0].table) return true;
  return sources[0].table->columns[static_cast<std::size_t>(ref->column)].isNullable;
}

}  // namespace

std::string itemName(std::size_t index) {
  return fmt::format("c{}", index + 1);
}

bool holdsAggregate(const QuerySpec& spec) {
  bool found = spec.having.has_value();
  const auto look = [&](const Expr& expr) { found = found || isAggregate(expr); };
  for (const ast::SelectItem& item : spec.items) forEachExpr(*item.expr, Subqueries::Skip, look);
  return found;
}

std::vector<Type> typesOf(const QuerySpec& spec) {
  std::vector<Type> types;
  for (const ast::SelectItem& item : spec.items) types.push_back(wantedType(*item.expr));
  return types;
}

bool comparesOutside(const Writer& writer, const std::vector<Type>& types) {
  return std::any_of(types.begin(), types.end(),
                     [&](Type type) { return writer.engine().comparesOutside(type); });
}

// While it lives, names stand for groups.
class SpecPrinter::GroupsSeen {
 public:
  explicit GroupsSeen(const SpecPrinter& printer) : printer_(printer) {
    if (!printer.spec_.groupBy.empty()) scope().grouped = &printer.spec_;
  }
  ~GroupsSeen() { scope().grouped = nullptr; }
  GroupsSeen(const GroupsSeen&) = delete;
  GroupsSeen& operator=(const GroupsSeen&) = delete;

 private:
  PrintedScope& scope() const { return printer_.writer_.scopes().back(); }
  const SpecPrinter& printer_;
};

SpecPrinter::SpecPrinter(Writer& writer, const ast::QuerySpec& spec)
    : writer_(writer), spec_(spec) {
  writer_.scopes().emplace_back();
  from_ = printFrom();
}

SpecPrinter::~SpecPrinter() {
  writer_.scopes().pop_back();
}

std::string SpecPrinter::body(Duplicates duplicates) const {
  const bool isDistinct = spec_.distinct && duplicates != Duplicates::Outside;
  std::string text = isDistinct ? "SELECT DISTINCT " : "SELECT ";
  text += items(isDistinct || duplicates == Duplicates::Compared);
  if (!from_.empty()) text += " FROM " + from_;
  if (spec_.where) text += " WHERE " + printCondition(writer_, *spec_.where);
  if (!spec_.groupBy.empty()) {
    std::vector<std::string> groups;
    for (const Expr& expr : spec_.groupBy) groups.push_back(compared(expr, Use::Equality));
    text += fmt::format(" GROUP BY {}", fmt::join(groups, ", "));
  }
  if (!spec_.having) return text;
  const GroupsSeen seen(*this);
  return text + " HAVING " + printCondition(writer_, *spec_.having);
}

std::string SpecPrinter::limit() const {
  if (!spec_.top) return {};
  const auto& literal = std::get<ast::Literal>(spec_.top->node);
  writer_.noteFixed(literal.ordinal, literal.text);
  return fmt::format(" LIMIT {}", parseInteger(literal.text).value_or(0));
}

std::string SpecPrinter::sorted(const Expr& expr, bool isDescending) const {
  const GroupsSeen seen(*this);
  return compared(expr, Use::Sort) +
         writer_.engine().direction(isDescending, mayBeNull(writer_, expr));
}

std::string SpecPrinter::sortedItem(std::size_t index, bool isDescending) const {
  const Engine& engine = writer_.engine();
  const Expr& expr = *spec_.items[index].expr;
  const Type type = wantedType(expr);
  const GroupsSeen seen(*this);
  std::string text =
      engine.sortsByNumber(type) ? fmt::format("{}", index + 1) : value(writer_, expr);
  return engine.sortKey(std::move(text), type) +
         engine.direction(isDescending, mayBeNull(writer_, expr));
}

std::vector<std::string> SpecPrinter::sortedGroups() const {
  std::vector<std::string> items;
  for (const Expr& expr : spec_.groupBy) items.push_back(sorted(expr, false));
  return items;
}

std::vector<std::string> SpecPrinter::sortedKey() const {
  const auto& sources = writer_.scopes().back().sources;
  if (sources.size() != 1 || !sources[0].table || holdsAggregate(spec_)) return {};
  const Table& table = *sources[0].table;
  const Engine& engine = writer_.engine();
  std::vector<std::string> items;
  for (const std::size_t index : table.key) {
    const Column& column = table.columns[index];
    const std::string name = sources[0].alias + "." + quotedName(column.name);
    items.push_back(engine.keyOrder(name, column));
  }
  const std::string rowid = engine.rowid(table);
  if (items.empty() && !rowid.empty()) items.push_back(sources[0].alias + "." + rowid);
  return items;
}

std::string SpecPrinter::compared(const Expr& expr, Use use) const {
  return writer_.engine().compared(writer_, expr, use, Side::Left);
}

std::string SpecPrinter::items(bool areCompared) const {
  const GroupsSeen seen(*this);
  std::string text;
  for (std::size_t i = 0; i < spec_.items.size(); ++i) {
    text += i == 0 ? "" : ", ";
    text += writer_.engine().selected(writer_, *spec_.items[i].expr, areCompared);
    text += " AS " + itemName(i);
  }
  return text;
}

std::string SpecPrinter::printFrom() {
  std::string text;
  for (const ast::FromItem& item : spec_.from) {
    // SQLite reads a comma as one more join, to the left; parentheses keep an entry's own joins
    // together.
    text += text.empty() ? "" : ", ";
    text += item.joins.empty() || spec_.from.size() == 1 ? printItem(item)
                                                         : "(" + printItem(item) + ")";
  }
  return text;
}

std::string SpecPrinter::printItem(const ast::FromItem& item) {
  constexpr std::string_view kJoins[] = {"JOIN", "LEFT JOIN", "RIGHT JOIN", "FULL JOIN"};
  std::string text = printSource(item.table);
  for (const ast::Join& join : item.joins) {
    const auto word = join.kind == ast::JoinKind::Cross
                          ? writer_.engine().crossJoin()
                          : kJoins[static_cast<std::size_t>(join.kind)];
    text += fmt::format(" {} {}", word, printSource(join.table));
    if (join.on) text += " ON " + joinCondition(join);
  }
  return text;
}

std::string SpecPrinter::joinCondition(const ast::Join& join) {
  if (!writer_.engine().needsConstants(join.kind)) return printCondition(writer_, *join.on);
  const Literals before = writer_.setLiterals(Literals::Inline);
  std::string text = printCondition(writer_, *join.on);
  writer_.setLiterals(before);
  return text;
}

std::string SpecPrinter::printSource(const ast::TableSource& source) {
  if (const auto* name = std::get_if<ast::TableName>(&source.table)) {
    const Table& table = writer_.table(*name, source.position);
    const std::string alias = writer_.newAlias();
    writer_.scopes().back().sources.push_back({alias, &table});
    return quotedName(table.name) + " AS " + alias;
  }
  const auto& derived = std::get<ast::DerivedTable>(source.table);
  const std::string query = printQuery(writer_, *derived.query, RowOrder::Any);
  const std::string alias = writer_.newAlias();
  writer_.scopes().back().sources.push_back({alias, nullptr});
  return "(" + query + ") AS " + alias;
}

}  // namespace tarlo::tsql::print
