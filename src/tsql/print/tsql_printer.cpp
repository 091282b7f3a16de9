#include "tsql/print/tsql_printer.h"

#include "tsql/print/tsql_writer.h"

namespace tarlo::tsql {

void TsqlWriter::type(std::string_view typeName, const std::vector<int>& sizes) {
  name(typeName);
  if (sizes.empty()) return;
  text("(");
  list(sizes, [this](int size) { text(size == -1 ? "MAX" : std::to_string(size)); });
  text(")");
}

void TsqlWriter::node(const ast::Select& select) {
  query(select.query);
}

void TsqlWriter::node(const ast::Insert& insert) {
  text("INSERT INTO ");
  table(insert.table);
  text(" ");
  if (!insert.columns.empty()) {
    names(insert.columns);
    text(" ");
  }
  if (insert.query) return query(*insert.query);
  text("VALUES ");
  list(insert.rows, [this](const std::vector<ast::Expr>& row) {
    text("(");
    exprs(row);
    text(")");
  });
}

void TsqlWriter::node(const ast::Update& update) {
  text("UPDATE ");
  table(update.table);
  text(" SET ");
  list(update.assignments, [this](const ast::Assignment& each) {
    name(each.column);
    text(" = ");
    expr(each.value);
  });
  if (!update.where) return;
  text(" WHERE ");
  condition(*update.where);
}

void TsqlWriter::node(const ast::Delete& remove) {
  text("DELETE FROM ");
  table(remove.table);
  text(" WHERE ");
  condition(remove.where);
}

void TsqlWriter::column(const ast::ColumnDefinition& column) {
  name(column.name);
  text(" ");
  if (column.computedAs) {
    text("AS (");
    expr(*column.computedAs);
    return text(")");
  }
  type(column.typeName, column.typeSizes);
  if (column.identity) text(" IDENTITY(1, 1)");
  if (column.notNull) text(" NOT NULL");
  if (column.primaryKey) text(" PRIMARY KEY");
  if (!column.defaultValue) return;
  text(" DEFAULT (");
  expr(*column.defaultValue);
  text(")");
}

void TsqlWriter::node(const ast::CreateTable& create) {
  text("CREATE TABLE ");
  table(create.table);
  text(" (");
  list(create.columns, [this](const ast::ColumnDefinition& each) { column(each); });
  if (!create.primaryKey.empty()) {
    text(", PRIMARY KEY ");
    names(create.primaryKey);
  }
  text(")");
}

void TsqlWriter::node(const ast::AddColumn& add) {
  text("ALTER TABLE ");
  table(add.table);
  text(" ADD ");
  column(add.column);
}

void TsqlWriter::node(const ast::CreateIndex& create) {
  text(create.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ");
  name(create.name);
  text(" ON ");
  table(create.table);
  text(" (");
  list(create.parts, [this](const ast::CreateIndex::Part& part) {
    name(part.column);
    if (part.descending) text(" DESC");
  });
  text(")");
}

void TsqlWriter::node(const ast::SetOption& set) {
  text("SET " + set.option + " ");
  if (!set.table.empty()) {
    name(set.table);
    text(" ");
  }
  text(set.on ? "ON" : "OFF");
}

void TsqlWriter::node(const ast::Declare& declare) {
  text("DECLARE " + declare.variable + " ");
  type(declare.typeName, declare.typeSizes);
}

void TsqlWriter::node(const ast::Execute& execute) {
  text("EXEC ");
  name(execute.procedure);
  if (!execute.arguments.empty()) text(" ");
  list(execute.arguments, [this](const ast::Execute::Argument& each) {
    expr(each.value);
    if (each.out) text(" OUT");
  });
}

void TsqlWriter::statement(const ast::Statement& statement) {
  std::visit([this](const auto& inner) { node(inner); }, statement.node);
}

std::string printTsql(const ast::Batch& batch) {
  std::string text;
  for (const ast::Statement& statement : batch.statements) {
    TsqlWriter writer;
    writer.statement(statement);
    if (!text.empty()) text += "; ";
    text += writer.take();
  }
  return text;
}

std::string printTsql(const ast::Expr& expr) {
  TsqlWriter writer;
  writer.expr(expr);
  return writer.take();
}

std::string printTsql(const ast::Condition& condition) {
  TsqlWriter writer;
  writer.condition(condition);
  return writer.take();
}

}  // namespace tarlo::tsql
