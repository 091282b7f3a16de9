// SELECT. Items are named c1, c2, ...; the titles of the result are the translation's. Where the
// statement gives no order, the order in which the other engine returns rows in practice is asked
// for, because pages rely on it.

#include <fmt/format.h>

#include <algorithm>

#include "tsql/print/select.h"
#include "tsql/resolve/literal_value.h"

namespace tarlo::tsql::print {
namespace {

using ast::Query;
using ast::QuerySpec;

std::string orderClause(const std::vector<std::string>& items) {
  return items.empty() ? "" : fmt::format(" ORDER BY {}", fmt::join(items, ", "));
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
  const auto count = [&](const ast::Expr& expr) {
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
    const bool sortsHere = !query_.orderBy.empty() || completes;
    // The ORDER BY of a UNION names items and computes nothing of them.
    const bool needsQuery = sortsHere && (isOutside_ ? !isWhole : !sortsByNumbers());
    const OuterRows rows(writer_, types_, isOutside_ && isWhole ? Distinct : AsTheyAre);
    if (needsQuery) text = rows.select(text);
    std::vector<std::string> items = statedItems(writer_, query_, rows);
    if (completes) appendItems(query_, rows, items);
    return text + orderClause(items) + pagingClause(writer_, query_);
  }

 private:
  bool sortsByNumbers() const {
    return std::all_of(types_.begin(), types_.end(),
                       [&](Type type) { return writer_.engine().sortsByNumber(type); });
  }

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
