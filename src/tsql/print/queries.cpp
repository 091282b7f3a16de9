// SELECT. Items are named c1, c2, ...; the titles of the result are the translation's. Where the
// statement gives no order, the order in which the other engine returns rows in practice is asked
// for, because pages rely on it.

#include <fmt/format.h>

#include <algorithm>

#include "tsql/print/printing.h"
#include "tsql/resolve/children.h"
#include "tsql/resolve/literal_value.h"

namespace tarlo::tsql::print {
namespace {

using ast::Expr;
using ast::Query;
using ast::QuerySpec;

bool holdsAggregate(const QuerySpec& spec) {
  bool found = spec.having.has_value();
  const auto look = [&](const Expr& expr) { found = found || isAggregate(expr); };
  for (const ast::SelectItem& item : spec.items) forEachExpr(*item.expr, Subqueries::Skip, look);
  return found;
}

std::string itemName(std::size_t index) {
  return fmt::format("c{}", index + 1);
}

std::string orderClause(const std::vector<std::string>& items) {
  return items.empty() ? "" : fmt::format(" ORDER BY {}", fmt::join(items, ", "));
}

// Whether the order among the values has a place for NULL: not for the column of a key.
bool mayBeNull(Writer& writer, const Expr& expr) {
  const auto* ref = std::get_if<ast::ColumnRef>(&expr.node);
  const auto& sources = writer.scopes().back().sources;
  if (ref == nullptr || ref->level != 0 || sources.size() != 1 || !sources[0].table) return true;
  return sources[0].table->columns[static_cast<std::size_t>(ref->column)].isNullable;
}

// What becomes of rows with equal values.
enum class Duplicates {
  Kept,
  Removed,   // by the DISTINCT of this query
  Compared,  // rows are compared with those of other parts
  Outside    // in the query round this one
};

// The clauses of one part; its scope stands while the object lives.
class SpecPrinter {
 public:
  SpecPrinter(Writer& writer, const QuerySpec& spec) : writer_(writer), spec_(spec) {
    writer_.scopes().emplace_back();
    from_ = printFrom();
  }
  ~SpecPrinter() { writer_.scopes().pop_back(); }
  SpecPrinter(const SpecPrinter&) = delete;
  SpecPrinter& operator=(const SpecPrinter&) = delete;

  std::string body(Duplicates duplicates) const {
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

  std::string limit() const {
    if (!spec_.top) return {};
    const auto& literal = std::get<ast::Literal>(spec_.top->node);
    writer_.noteFixed(literal.ordinal, literal.text);
    return fmt::format(" LIMIT {}", parseInteger(literal.text).value_or(0));
  }

  // The order of an expression over the tables.
  std::string sorted(const Expr& expr, bool isDescending) const {
    const GroupsSeen seen(*this);
    return compared(expr, Use::Sort) +
           writer_.engine().direction(isDescending, mayBeNull(writer_, expr));
  }

  // The order of a select item, by its number where that says it.
  std::string sortedItem(std::size_t index, bool isDescending) const {
    const Engine& engine = writer_.engine();
    const Expr& expr = *spec_.items[index].expr;
    const Type type = wantedType(expr);
    const GroupsSeen seen(*this);
    std::string text =
        engine.sortsByNumber(type) ? fmt::format("{}", index + 1) : value(writer_, expr);
    return engine.sortKey(std::move(text), type) +
           engine.direction(isDescending, mayBeNull(writer_, expr));
  }

  std::vector<std::string> sortedGroups() const {
    std::vector<std::string> items;
    for (const Expr& expr : spec_.groupBy) items.push_back(sorted(expr, false));
    return items;
  }

  // The key of the only table, by which rows without an order come.
  std::vector<std::string> sortedKey() const {
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

 private:
  // While it lives, names stand for groups.
  class GroupsSeen {
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

  std::string compared(const Expr& expr, Use use) const {
    return writer_.engine().compared(writer_, expr, use, Side::Left);
  }

  std::string items(bool areCompared) const {
    const GroupsSeen seen(*this);
    std::string text;
    for (std::size_t i = 0; i < spec_.items.size(); ++i) {
      text += i == 0 ? "" : ", ";
      text += writer_.engine().selected(writer_, *spec_.items[i].expr, areCompared);
      text += " AS " + itemName(i);
    }
    return text;
  }

  std::string printFrom() {
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

  std::string printItem(const ast::FromItem& item) {
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

  std::string joinCondition(const ast::Join& join) {
    if (!writer_.engine().needsConstants(join.kind)) return printCondition(writer_, *join.on);
    const Literals before = writer_.setLiterals(Literals::Inline);
    std::string text = printCondition(writer_, *join.on);
    writer_.setLiterals(before);
    return text;
  }

  std::string printSource(const ast::TableSource& source) {
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

  Writer& writer_;
  const QuerySpec& spec_;
  std::string from_;
};

std::vector<Type> typesOf(const QuerySpec& spec) {
  std::vector<Type> types;
  for (const ast::SelectItem& item : spec.items) types.push_back(wantedType(*item.expr));
  return types;
}

// Rows whose values are seen from the query round them: c1, c2, ... of these types.
class OuterRows {
 public:
  enum class Form { AsTheyAre, Distinct };
  OuterRows(Writer& writer, std::vector<Type> types, Form form)
      : writer_(writer), types_(std::move(types)), form_(form) {}

  std::string select(const std::string& rows) const {
    std::vector<std::string> items;
    std::vector<std::string> groups;
    for (std::size_t i = 0; i < types_.size(); ++i) {
      items.push_back(item(i) + " AS " + itemName(i));
      groups.push_back(writer_.engine().distinctGroup(itemName(i), types_[i]));
    }
    std::string text =
        fmt::format("SELECT {} FROM ({}){}", fmt::join(items, ", "), rows, writer_.derivedAlias());
    if (form_ == Form::Distinct) text += fmt::format(" GROUP BY {}", fmt::join(groups, ", "));
    return text;
  }

  std::string sortedItem(std::size_t index, bool isDescending) const {
    const Engine& engine = writer_.engine();
    const Type type = types_[index];
    std::string text = engine.sortsByNumber(type) ? fmt::format("{}", index + 1) : item(index);
    return engine.sortKey(std::move(text), type) + engine.direction(isDescending, true);
  }

 private:
  std::string item(std::size_t index) const {
    std::string name = itemName(index);
    return form_ == Form::Distinct ? writer_.engine().distinctItem(name, types_[index]) : name;
  }

  Writer& writer_;
  std::vector<Type> types_;
  Form form_;
};

bool comparesOutside(const Writer& writer, const std::vector<Type>& types) {
  return std::any_of(types.begin(), types.end(),
                     [&](Type type) { return writer.engine().comparesOutside(type); });
}

// Notes an ordinal of the text; what it names is printed.
void noteOrdinal(Writer& writer, const ast::OrderItem& item) {
  if (const auto* literal = std::get_if<ast::Literal>(&item.expr.node)) {
    writer.noteFixed(literal->ordinal, literal->text);
  }
}

// What ORDER BY names of the select items; `sortedItem` as of the printers above.
template <class Rows>
std::vector<std::string> statedItems(Writer& writer, const Query& query, const Rows& rows) {
  std::vector<std::string> items;
  for (const ast::OrderItem& item : query.orderBy) {
    noteOrdinal(writer, item);
    if (item.item >= 0) {
      items.push_back(rows.sortedItem(static_cast<std::size_t>(item.item), item.descending));
    } else if constexpr (requires { rows.sorted(item.expr, true); }) {
      items.push_back(rows.sorted(item.expr, item.descending));
    }
  }
  return items;
}

// All columns that ORDER BY does not name yet.
template <class Rows>
void appendItems(const Query& query, const Rows& rows, std::vector<std::string>& items) {
  for (std::size_t i = 0; i < query.parts[0].items.size(); ++i) {
    bool named = false;
    for (const ast::OrderItem& item : query.orderBy) {
      named = named || item.item == static_cast<int>(i);
    }
    if (!named) items.push_back(rows.sortedItem(i, false));
  }
}

std::string pagingClause(Writer& writer, const Query& query) {
  if (!query.offset) return {};
  const auto count = [&](const Expr& expr) {
    return writer.literal(std::get<ast::Literal>(expr.node), kIntType, expr.position);
  };
  const std::string offset = count(*query.offset);
  return writer.engine().paging(query.fetch ? count(*query.fetch) : "", offset);
}

void append(std::vector<std::string>& items, std::vector<std::string> more) {
  for (std::string& item : more) items.push_back(std::move(item));
}

std::string limitClause(Writer& writer, const Query& query, const SpecPrinter& printer) {
  return query.offset ? pagingClause(writer, query) : printer.limit();
}

// SELECT DISTINCT whose values the engine does not compare as the language does.
std::string printDistinctOutside(Writer& writer, const Query& query, const SpecPrinter& printer,
                                 bool isOrdered) {
  const OuterRows rows(writer, typesOf(query.parts[0]), OuterRows::Form::Distinct);
  const std::string body = rows.select(printer.body(Duplicates::Outside));
  std::vector<std::string> items = statedItems(writer, query, rows);
  if (isOrdered) appendItems(query, rows, items);
  return body + orderClause(items) + limitClause(writer, query, printer);
}

std::string printSingle(Writer& writer, const Query& query, RowOrder order) {
  const QuerySpec& spec = query.parts[0];
  const SpecPrinter printer(writer, spec);
  const bool isOrdered = order == RowOrder::Ordered || spec.top || query.offset;
  if (spec.distinct && comparesOutside(writer, typesOf(spec))) {
    return printDistinctOutside(writer, query, printer, isOrdered);
  }
  const std::string body = printer.body(spec.distinct ? Duplicates::Removed : Duplicates::Kept);
  std::vector<std::string> items = statedItems(writer, query, printer);
  if (isOrdered) {
    if (spec.distinct) {
      appendItems(query, printer, items);
    } else if (!spec.groupBy.empty()) {
      append(items, printer.sortedGroups());
    } else {
      append(items, printer.sortedKey());
    }
  }
  return body + orderClause(items) + limitClause(writer, query, printer);
}

// Removed: those of the query's parts are compared by the engine. Outside: in a query round them.
std::string unionPart(Writer& writer, const QuerySpec& spec, Duplicates duplicates) {
  const bool compared = duplicates == Duplicates::Removed;
  Query alone;
  alone.parts.push_back(spec);
  // A part with TOP keeps its limit in a query of its own: SQLite takes none inside a UNION.
  const bool distinctOutside = spec.distinct && comparesOutside(writer, typesOf(spec));
  if (!spec.top && !distinctOutside) {
    return SpecPrinter(writer, spec).body(compared ? Duplicates::Compared : Duplicates::Kept);
  }
  const std::string limited = printSingle(writer, alone, RowOrder::Any);
  if (!spec.top) return limited;
  std::string text = "SELECT ";
  for (std::size_t i = 0; i < spec.items.size(); ++i) {
    const std::string name = itemName(i);
    const Type type = wantedType(*spec.items[i].expr);
    const std::string item = compared ? writer.engine().comparedItem(name, type) : name;
    text += fmt::format("{}{} AS {}", i == 0 ? "" : ", ", item, name);
  }
  return text + " FROM (" + limited + ")" + writer.derivedAlias();
}

class UnionPrinter {
 public:
  UnionPrinter(Writer& writer, const Query& query)
      : writer_(writer), query_(query), types_(typesOf(query.parts[0])) {
    const auto last = std::find(query.ops.rbegin(), query.ops.rend(), ast::SetOp::Union);
    comparedParts_ = static_cast<std::size_t>(query.ops.rend() - last);
    if (comparedParts_ > 0) ++comparedParts_;
    isOutside_ = comparesOutside(writer, types_);
  }

  std::string print(RowOrder order) const {
    const bool removesDuplicates = comparedParts_ > 0;
    // Branches of UNION ALL stay in their order.
    const bool sorts = removesDuplicates || !query_.orderBy.empty();
    const bool completes = (order == RowOrder::Ordered && sorts) || query_.offset;
    const bool isWhole = comparedParts_ == query_.parts.size();
    std::string text = isOutside_ ? distinctParts() : parts();
    using enum OuterRows::Form;
    const bool needsQuery = isOutside_ && !isWhole && (!query_.orderBy.empty() || completes);
    const OuterRows rows(writer_, types_, isOutside_ && isWhole ? Distinct : AsTheyAre);
    if (needsQuery) text = rows.select(text);
    std::vector<std::string> items = statedItems(writer_, query_, rows);
    if (completes) appendItems(query_, rows, items);
    return text + orderClause(items) + pagingClause(writer_, query_);
  }

 private:
  std::string part(std::size_t index, Duplicates duplicates) const {
    return unionPart(writer_, query_.parts[index], duplicates);
  }

  std::string parts() const {
    const Duplicates duplicates = comparedParts_ > 0 ? Duplicates::Removed : Duplicates::Kept;
    std::string text;
    for (std::size_t i = 0; i < query_.parts.size(); ++i) {
      if (i > 0) text += query_.ops[i - 1] == ast::SetOp::Union ? " UNION " : " UNION ALL ";
      text += part(i, duplicates);
    }
    return text;
  }

  // The last UNION removes what is double in all parts before it.
  std::string distinctParts() const {
    std::string text;
    for (std::size_t i = 0; i < query_.parts.size(); ++i) {
      text += (i == 0 ? "" : " UNION ALL ") + part(i, Duplicates::Outside);
      if (i + 1 == comparedParts_) {
        text = OuterRows(writer_, types_, OuterRows::Form::Distinct).select(text);
      }
    }
    return text;
  }

  Writer& writer_;
  const Query& query_;
  std::vector<Type> types_;
  std::size_t comparedParts_ = 0;
  bool isOutside_ = false;
};

}  // namespace

bool givesOneRow(const Query& query) {
  if (query.parts.size() > 1) return false;
  const QuerySpec& spec = query.parts[0];
  if (spec.from.empty()) return true;
  if (spec.groupBy.empty() && holdsAggregate(spec)) return true;
  if (!spec.top) return false;
  return parseInteger(std::get<ast::Literal>(spec.top->node).text).value_or(0) <= 1;
}

std::string printQuery(Writer& writer, const Query& query, RowOrder order) {
  return query.parts.size() == 1 ? printSingle(writer, query, order)
                                 : UnionPrinter(writer, query).print(order);
}

}  // namespace tarlo::tsql::print
