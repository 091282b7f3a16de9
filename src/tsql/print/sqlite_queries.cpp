// SELECT. Items are named c1, c2, ...; the titles of the result are the translation's. Where the
// statement gives no order, the order in which the other engine returns rows in practice is asked
// for, because pages rely on it.

#include <fmt/format.h>

#include "tsql/print/sqlite_writer.h"
#include "tsql/resolve/children.h"
#include "tsql/resolve/literal_value.h"

namespace tarlo::tsql::sqlite {
namespace {

using ast::Expr;
using ast::Query;
using ast::QuerySpec;

bool holdsAggregate(const QuerySpec& spec) {
  bool found = spec.having.has_value();
  const auto look = [&](const Expr& expr) {
    const auto* function = std::get_if<ast::FunctionCall>(&expr.node);
    found = found || (function && isAggregate(*function));
  };
  for (const ast::SelectItem& item : spec.items) forEachExpr(*item.expr, Subqueries::Skip, look);
  return found;
}

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

  // `collate`: rows will be compared with those of other parts.
  std::string body(bool collate) const {
    std::string text = spec_.distinct ? "SELECT DISTINCT " : "SELECT ";
    for (std::size_t i = 0; i < spec_.items.size(); ++i) {
      const Expr& expr = *spec_.items[i].expr;
      text += i == 0 ? "" : ", ";
      text += collate || spec_.distinct ? comparedValue(writer_, expr) : value(writer_, expr);
      text += fmt::format(" AS c{}", i + 1);
    }
    if (!from_.empty()) text += " FROM " + from_;
    if (spec_.where) text += " WHERE " + printCondition(writer_, *spec_.where);
    if (!spec_.groupBy.empty()) {
      text += fmt::format(" GROUP BY {}", fmt::join(groupItems(), ", "));
    }
    if (spec_.having) text += " HAVING " + printCondition(writer_, *spec_.having);
    return text;
  }

  std::string limit() const {
    if (!spec_.top) return {};
    const auto& literal = std::get<ast::Literal>(spec_.top->node);
    writer_.noteFixed(literal.ordinal, literal.text);
    return fmt::format(" LIMIT {}", parseInteger(literal.text).value_or(0));
  }

  std::vector<std::string> groupItems() const {
    std::vector<std::string> items;
    for (const Expr& expr : spec_.groupBy) items.push_back(comparedValue(writer_, expr));
    return items;
  }

  // The key of the only table, by which rows without an order come.
  std::vector<std::string> keyItems() const {
    const PrintedScope& scope = writer_.scopes().back();
    if (scope.size() != 1 || !scope[0].table || holdsAggregate(spec_)) return {};
    const Table& table = *scope[0].table;
    std::vector<std::string> items;
    for (const std::size_t column : table.key) {
      items.push_back(scope[0].alias + "." + quotedName(table.columns[column].name));
    }
    if (items.empty() && table.hasRowid) items.push_back(scope[0].alias + ".rowid");
    return items;
  }

 private:
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
    constexpr std::string_view kJoins[] = {"JOIN", "LEFT JOIN", "RIGHT JOIN", "FULL JOIN", "JOIN"};
    std::string text = printSource(item.table);
    for (const ast::Join& join : item.joins) {
      text += fmt::format(" {} {}", kJoins[static_cast<std::size_t>(join.kind)],
                          printSource(join.table));
      if (join.on) text += " ON " + printCondition(writer_, *join.on);
    }
    return text;
  }

  std::string printSource(const ast::TableSource& source) {
    if (const auto* name = std::get_if<ast::TableName>(&source.table)) {
      const Table& table = writer_.table(*name, source.position);
      const std::string alias = writer_.newAlias();
      writer_.scopes().back().push_back({alias, &table});
      return quotedName(table.name) + " AS " + alias;
    }
    const auto& derived = std::get<ast::DerivedTable>(source.table);
    const std::string query = printQuery(writer_, *derived.query, RowOrder::Any);
    const std::string alias = writer_.newAlias();
    writer_.scopes().back().push_back({alias, nullptr});
    return "(" + query + ") AS " + alias;
  }

  Writer& writer_;
  const QuerySpec& spec_;
  std::string from_;
};

std::string orderClause(const std::vector<std::string>& items) {
  return items.empty() ? "" : fmt::format(" ORDER BY {}", fmt::join(items, ", "));
}

Type itemType(const Query& query, std::size_t item) {
  const Expr& expr = *query.parts[0].items[item].expr;
  return expr.wanted.kind == Kind::Null ? expr.type : expr.wanted;
}

std::string ordinal(const Query& query, std::size_t item) {
  return collated(fmt::format("{}", item + 1), itemType(query, item));
}

// Notes an ordinal of the text; what it names is printed.
void noteOrdinal(Writer& writer, const ast::OrderItem& item) {
  if (const auto* literal = std::get_if<ast::Literal>(&item.expr.node)) {
    writer.noteFixed(literal->ordinal, literal->text);
  }
}

std::vector<std::string> statedOrder(Writer& writer, const Query& query) {
  std::vector<std::string> items;
  for (const ast::OrderItem& item : query.orderBy) {
    noteOrdinal(writer, item);
    std::string text = item.item >= 0 ? ordinal(query, static_cast<std::size_t>(item.item))
                                      : comparedValue(writer, item.expr);
    items.push_back(text + (item.descending ? " DESC" : ""));
  }
  return items;
}

// All columns that ORDER BY does not name yet.
void appendOrdinals(const Query& query, std::vector<std::string>& items) {
  for (std::size_t i = 0; i < query.parts[0].items.size(); ++i) {
    bool named = false;
    for (const ast::OrderItem& item : query.orderBy) {
      named = named || item.item == static_cast<int>(i);
    }
    if (!named) items.push_back(ordinal(query, i));
  }
}

std::string pagingClause(Writer& writer, const Query& query) {
  if (!query.offset) return {};
  const auto count = [&](const Expr& expr) {
    return writer.literal(std::get<ast::Literal>(expr.node), kIntType, expr.position);
  };
  const std::string offset = count(*query.offset);
  return fmt::format(" LIMIT {} OFFSET {}", query.fetch ? count(*query.fetch) : "-1", offset);
}

void append(std::vector<std::string>& items, std::vector<std::string> more) {
  for (std::string& item : more) items.push_back(std::move(item));
}

std::string printSingle(Writer& writer, const Query& query, RowOrder order) {
  const QuerySpec& spec = query.parts[0];
  const SpecPrinter printer(writer, spec);
  const std::string body = printer.body(false);
  std::vector<std::string> items = statedOrder(writer, query);
  if (order == RowOrder::Ordered || spec.top || query.offset) {
    if (spec.distinct) {
      appendOrdinals(query, items);
    } else if (!spec.groupBy.empty()) {
      append(items, printer.groupItems());
    } else {
      append(items, printer.keyItems());
    }
  }
  const std::string limit = query.offset ? pagingClause(writer, query) : printer.limit();
  return body + orderClause(items) + limit;
}

// A part with TOP keeps its limit in a query of its own: SQLite takes none inside a UNION.
std::string unionPart(Writer& writer, const QuerySpec& spec, bool collate) {
  if (!spec.top) return SpecPrinter(writer, spec).body(collate);
  Query alone;
  alone.parts.push_back(spec);
  const std::string limited = printSingle(writer, alone, RowOrder::Any);
  std::string text = "SELECT ";
  for (std::size_t i = 0; i < spec.items.size(); ++i) {
    const std::string name = fmt::format("c{}", i + 1);
    const std::string item = collate ? collated(name, itemType(alone, i)) : name;
    text += fmt::format("{}{} AS {}", i == 0 ? "" : ", ", item, name);
  }
  return text + " FROM (" + limited + ")";
}

std::string printUnion(Writer& writer, const Query& query, RowOrder order) {
  bool removesDuplicates = false;
  for (const ast::SetOp op : query.ops) {
    removesDuplicates = removesDuplicates || op == ast::SetOp::Union;
  }
  std::string text;
  for (std::size_t i = 0; i < query.parts.size(); ++i) {
    if (i > 0) text += query.ops[i - 1] == ast::SetOp::Union ? " UNION " : " UNION ALL ";
    text += unionPart(writer, query.parts[i], removesDuplicates);
  }
  std::vector<std::string> items = statedOrder(writer, query);
  // Branches of UNION ALL stay in their order.
  const bool sorts = removesDuplicates || !items.empty();
  if ((order == RowOrder::Ordered && sorts) || query.offset) appendOrdinals(query, items);
  return text + orderClause(items) + pagingClause(writer, query);
}

bool givesOneRow(const Query& query) {
  if (query.parts.size() > 1) return false;
  const QuerySpec& spec = query.parts[0];
  if (spec.from.empty()) return true;
  if (spec.groupBy.empty() && holdsAggregate(spec)) return true;
  if (!spec.top) return false;
  return parseInteger(std::get<ast::Literal>(spec.top->node).text).value_or(0) <= 1;
}

}  // namespace

std::string printQuery(Writer& writer, const Query& query, RowOrder order) {
  return query.parts.size() == 1 ? printSingle(writer, query, order)
                                 : printUnion(writer, query, order);
}

std::string printScalarSubquery(Writer& writer, const Query& query) {
  const std::string text = printQuery(writer, query, RowOrder::Any);
  if (givesOneRow(query)) return "(" + text + ")";
  // Over a derived table, so that the aggregate never belongs to the query outside.
  return "(SELECT tsql_single(c1) FROM (" + text + "))";
}

}  // namespace tarlo::tsql::sqlite
