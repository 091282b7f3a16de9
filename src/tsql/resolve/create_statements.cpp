// CREATE TABLE, ALTER TABLE and CREATE INDEX.

#include <fmt/format.h>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/resolve/children.h"
#include "tsql/resolve/conversion.h"
#include "tsql/resolve/rules.h"
#include "tsql/resolve/type_names.h"

namespace tarlo::tsql {
namespace {

using ast::ColumnDefinition;

// A table cannot have more columns than this on the server.
constexpr std::size_t kMostColumns = 1024;

[[noreturn]] void refuse(Refusal refusal, Position position, const std::string& message) {
  throw StatementError(refusal, position, message);
}

bool hasColumn(const std::vector<ResultColumn>& columns, std::string_view name) {
  return std::any_of(columns.begin(), columns.end(), [&](const ResultColumn& column) {
    return text::equalsNoCase(column.title, name);
  });
}

class TableDefinition {
 public:
  TableDefinition(BatchContext& batch, ast::CreateTable& create, Position position)
      : batch_(batch), create_(create), position_(position) {}

  // The columns that are there already, for a definition that adds to them.
  void addExisting(const Table& table) {
    for (const Column& column : table.columns) {
      (column.isGenerated ? computed_ : stored_).push_back({column.name, column.type});
    }
  }

  void resolve() {
    if (create_.columns.size() > kMostColumns) {
      refuse(Refusal::Limit, position_, fmt::format("more than {} columns", kMostColumns));
    }
    checkNames();
    for (ColumnDefinition& column : create_.columns) {
      if (!column.computedAs) resolveStored(column);
    }
    for (ColumnDefinition& column : create_.columns) {
      if (column.computedAs) resolveComputed(column);
    }
    checkKey();
  }

 private:
  void checkNames() const {
    for (std::size_t i = 0; i < create_.columns.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        const ColumnDefinition& column = create_.columns[i];
        if (!text::equalsNoCase(column.name, create_.columns[j].name)) continue;
        refuse(Refusal::Name, column.position,
               fmt::format("column {} is defined twice", column.name));
      }
    }
  }

  void resolveStored(ColumnDefinition& column) {
    const Type type =
        typeOf(column.typeName, column.typeSizes, TypeUse::Declaration, column.position);
    if (column.identity && type.kind != Kind::Int) {
      refuse(Refusal::Kind, column.position,
             fmt::format("identity column {} must be an integer", column.name));
    }
    identities_ += column.identity ? 1 : 0;
    if (identities_ > 1) {
      refuse(Refusal::Rule, column.position, "a table has one identity column at most");
    }
    if (column.defaultValue) {
      const Scope noTables;
      resolveAlone(noTables, *column.defaultValue, "DEFAULT");
      want(*column.defaultValue, type, column.name);
    }
    stored_.push_back({column.name, type});
  }

  // A computed column reads the stored ones only.
  void resolveComputed(ColumnDefinition& column) {
    Scope scope;
    scope.add(Source(create_.table.name, stored_), column.position);
    scope.showAll();
    resolveAlone(scope, *column.computedAs, "a computed column");
    computed_.push_back({column.name, column.computedAs->type});
  }

  void resolveAlone(const Scope& scope, ast::Expr& expr, std::string_view clause) const {
    if (holdsSubquery(expr)) {
      refuse(Refusal::Rule, expr.position, fmt::format("a sub-query cannot stand in {}", clause));
    }
    resolveExpr({batch_, scope, clause}, expr);
    fixLiterals(expr);
  }

  void checkKey() const {
    std::size_t keys = create_.primaryKey.empty() ? 0 : 1;
    for (const ColumnDefinition& column : create_.columns) keys += column.primaryKey ? 1 : 0;
    if (keys > 1) refuse(Refusal::Rule, position_, "a table has one primary key at most");
    for (const std::string& name : create_.primaryKey) {
      if (!hasColumn(stored_, name) && !hasColumn(computed_, name)) {
        refuse(Refusal::Name, position_, fmt::format("unknown column {} in PRIMARY KEY", name));
      }
    }
  }

  BatchContext& batch_;
  ast::CreateTable& create_;
  Position position_;
  std::vector<ResultColumn> stored_;
  std::vector<ResultColumn> computed_;
  int identities_ = 0;
};

}  // namespace

void resolveCreateTable(BatchContext& batch, ast::CreateTable& create, Position position) {
  TableDefinition(batch, create, position).resolve();
}

void resolveAddColumn(BatchContext& batch, ast::AddColumn& add, Position position) {
  const Table& table = findTable(batch, Access::Write, add.table.schema, add.table.name, position);
  ColumnDefinition& column = add.column;
  if (table.find(column.name) >= 0) {
    refuse(Refusal::Name, column.position, fmt::format("column {} is there already", column.name));
  }
  if (column.identity || column.primaryKey) {
    refuse(Refusal::Rule, column.position, "a key cannot be added to a table");
  }
  if (column.notNull && !column.defaultValue) {
    refuse(Refusal::Rule, column.position,
           fmt::format("column {} needs a default for the rows that are there", column.name));
  }
  ast::CreateTable alone;
  alone.table = add.table;
  alone.columns.push_back(std::move(column));
  TableDefinition definition(batch, alone, position);
  definition.addExisting(table);
  definition.resolve();
  column = std::move(alone.columns.front());
}

void resolveCreateIndex(BatchContext& batch, const ast::CreateIndex& create, Position position) {
  const Table& table =
      findTable(batch, Access::Write, create.table.schema, create.table.name, position);
  std::vector<int> indexed;
  for (const ast::CreateIndex::Part& part : create.parts) {
    const int column = table.find(part.column);
    if (column < 0) {
      refuse(Refusal::Name, position, fmt::format("unknown column {}", part.column));
    }
    if (std::find(indexed.begin(), indexed.end(), column) != indexed.end()) {
      refuse(Refusal::Rule, position,
             fmt::format("column {} stands twice in the index", part.column));
    }
    indexed.push_back(column);
  }
}

}  // namespace tarlo::tsql
