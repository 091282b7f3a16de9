// INSERT, UPDATE and DELETE.

#include <fmt/format.h>

#include <algorithm>

#include "tsql/error.h"
#include "tsql/resolve/conversion.h"
#include "tsql/resolve/rules.h"

namespace tarlo::tsql {
namespace {

// Column names of one statement, each once and none that cannot be written.
class WrittenColumns {
 public:
  explicit WrittenColumns(const Table& table) : table_(table) {}

  const Column& add(std::string_view name, Position position) {
    const int index = table_.find(name);
    if (index < 0) refuse(position, Refusal::Name, fmt::format("unknown column {}", name));
    const Column& column = table_.columns[static_cast<std::size_t>(index)];
    if (std::find(columns_.begin(), columns_.end(), &column) != columns_.end()) {
      refuse(position, Refusal::Rule, fmt::format("column {} is written twice", name));
    }
    if (column.isGenerated) {
      refuse(position, Refusal::Rule, fmt::format("column {} is computed", name));
    }
    columns_.push_back(&column);
    return column;
  }

  void addAllWritable() {
    for (const Column& column : table_.columns) {
      if (!column.isIdentity && !column.isGenerated) columns_.push_back(&column);
    }
  }

  const std::vector<const Column*>& columns() const { return columns_; }

  void checkCount(std::size_t values, Position position) const {
    if (values == columns_.size()) return;
    refuse(position, Refusal::Rule,
           fmt::format("{} columns of {} and {} values", columns_.size(), table_.name, values));
  }

 private:
  [[noreturn]] static void refuse(Position position, Refusal refusal, const std::string& message) {
    throw StatementError(refusal, position, message);
  }

  const Table& table_;
  std::vector<const Column*> columns_;
};

void resolveRows(BatchContext& batch, ast::Insert& insert, const WrittenColumns& written,
                 Position position) {
  const Scope noTables;
  const Context context{batch, noTables, "VALUES"};
  for (auto& row : insert.rows) {
    written.checkCount(row.size(), row.empty() ? position : row[0].position);
    for (std::size_t i = 0; i < row.size(); ++i) {
      const Column& column = *written.columns()[i];
      resolveExpr(context, row[i]);
      want(row[i], column.type, column.name);
    }
  }
}

void resolveSelected(BatchContext& batch, ast::Query& query, const WrittenColumns& written) {
  const auto columns = resolveQuery(batch, nullptr, query, QueryUse::Statement);
  written.checkCount(columns.size(), query.position);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const Column& column = *written.columns()[i];
    wantColumn(query, i, column.type, column.name);
  }
}

// The one table of a statement that changes or deletes its rows.
Scope scopeOf(const ast::TableName& name, const Table& table, Position position) {
  Scope scope;
  scope.add(Source(name.alias.empty() ? name.name : name.alias, table), position);
  scope.showAll();
  return scope;
}

}  // namespace

void resolveInsert(BatchContext& batch, ast::Insert& insert, Position position,
                   std::string& explicitIdentityOf) {
  const Table& table =
      findTable(batch, Access::Write, insert.table.schema, insert.table.name, position);
  WrittenColumns written(table);
  for (const std::string& name : insert.columns) {
    if (written.add(name, position).isIdentity) explicitIdentityOf = table.name;
  }
  if (insert.columns.empty()) written.addAllWritable();
  if (insert.query) {
    resolveSelected(batch, *insert.query, written);
  } else {
    resolveRows(batch, insert, written, position);
  }
}

void resolveUpdate(BatchContext& batch, ast::Update& update, Position position) {
  const Table& table =
      findTable(batch, Access::Write, update.table.schema, update.table.name, position);
  const Scope scope = scopeOf(update.table, table, position);
  WrittenColumns written(table);
  for (ast::Assignment& assignment : update.assignments) {
    const Column& column = written.add(assignment.column, assignment.position);
    if (column.isIdentity) {
      throw StatementError(Refusal::Rule, assignment.position,
                           fmt::format("identity column {} cannot be changed", column.name));
    }
    resolveExpr({batch, scope, "SET"}, assignment.value);
    want(assignment.value, column.type, column.name);
  }
  if (update.where) resolveCondition({batch, scope, "WHERE"}, *update.where);
}

void resolveDelete(BatchContext& batch, ast::Delete& remove, Position position) {
  const Table& table =
      findTable(batch, Access::Delete, remove.table.schema, remove.table.name, position);
  const Scope scope = scopeOf(remove.table, table, position);
  resolveCondition({batch, scope, "WHERE"}, remove.where);
}

}  // namespace tarlo::tsql
