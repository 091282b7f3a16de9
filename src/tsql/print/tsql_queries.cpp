#include "tsql/print/tsql_writer.h"

namespace tarlo::tsql {
namespace {

std::string_view joinWords(ast::JoinKind kind) {
  switch (kind) {
    case ast::JoinKind::Inner:
      return " INNER JOIN ";
    case ast::JoinKind::Left:
      return " LEFT JOIN ";
    case ast::JoinKind::Right:
      return " RIGHT JOIN ";
    case ast::JoinKind::Full:
      return " FULL JOIN ";
    case ast::JoinKind::Cross:
      return " CROSS JOIN ";
  }
  return "";
}

}  // namespace

void TsqlWriter::name(std::string_view name) {
  text("[");
  for (const char c : name) {
    if (c == ']') text("]");
    out_ += c;
  }
  text("]");
}

void TsqlWriter::names(const std::vector<std::string>& names) {
  text("(");
  list(names, [this](const std::string& each) { name(each); });
  text(")");
}

void TsqlWriter::table(const ast::TableName& table) {
  if (!table.schema.empty()) {
    name(table.schema);
    text(".");
  }
  name(table.name);
  if (table.alias.empty()) return;
  text(" AS ");
  name(table.alias);
}

void TsqlWriter::source(const ast::TableSource& source) {
  if (const auto* named = std::get_if<ast::TableName>(&source.table)) return table(*named);
  const auto& derived = std::get<ast::DerivedTable>(source.table);
  text("(");
  query(*derived.query);
  text(") AS ");
  name(derived.alias);
}

void TsqlWriter::fromItem(const ast::FromItem& item) {
  source(item.table);
  for (const ast::Join& join : item.joins) {
    text(joinWords(join.kind));
    source(join.table);
    if (!join.on) continue;
    text(" ON ");
    condition(*join.on);
  }
}

void TsqlWriter::item(const ast::SelectItem& item) {
  if (!item.expr) {
    if (!item.starTable.empty()) {
      name(item.starTable);
      text(".");
    }
    return text("*");
  }
  expr(*item.expr);
  if (item.alias.empty()) return;
  text(" AS ");
  name(item.alias);
}

void TsqlWriter::spec(const ast::QuerySpec& spec) {
  text(spec.distinct ? "SELECT DISTINCT " : "SELECT ");
  if (spec.top) {
    text("TOP ");
    expr(*spec.top);
    text(" ");
  }
  list(spec.items, [this](const ast::SelectItem& each) { item(each); });
  if (!spec.from.empty()) {
    text(" FROM ");
    list(spec.from, [this](const ast::FromItem& each) { fromItem(each); });
  }
  if (spec.where) {
    text(" WHERE ");
    condition(*spec.where);
  }
  if (!spec.groupBy.empty()) {
    text(" GROUP BY ");
    exprs(spec.groupBy);
  }
  if (!spec.having) return;
  text(" HAVING ");
  condition(*spec.having);
}

void TsqlWriter::query(const ast::Query& query) {
  for (std::size_t i = 0; i < query.parts.size(); ++i) {
    if (i > 0) text(query.ops[i - 1] == ast::SetOp::Union ? " UNION " : " UNION ALL ");
    spec(query.parts[i]);
  }
  if (query.orderBy.empty()) return;
  text(" ORDER BY ");
  list(query.orderBy, [this](const ast::OrderItem& each) {
    expr(each.expr);
    if (each.descending) text(" DESC");
  });
  if (!query.offset) return;
  text(" OFFSET ");
  expr(*query.offset);
  text(" ROWS");
  if (!query.fetch) return;
  text(" FETCH NEXT ");
  expr(*query.fetch);
  text(" ROWS ONLY");
}

}  // namespace tarlo::tsql
