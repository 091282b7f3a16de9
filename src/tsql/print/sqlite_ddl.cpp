// CREATE TABLE, ALTER TABLE and CREATE INDEX. Files stay writable for every other SQLite program:
// the only collation is SQLite's NOCASE.

#include <fmt/format.h>

#include <algorithm>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/print/sqlite_types.h"
#include "tsql/print/sqlite_writer.h"
#include "tsql/resolve/type_names.h"

namespace tarlo::tsql::sqlite {
namespace {

std::string typeText(Type type) {
  return declaredType(type) + (type.kind == Kind::Text ? " COLLATE NOCASE" : "");
}

Column describedColumn(const ast::ColumnDefinition& definition) {
  Column column;
  column.name = definition.name;
  column.type = definition.computedAs ? definition.computedAs->type
                                      : typeOf(definition.typeName, definition.typeSizes,
                                               TypeUse::Declaration, definition.position);
  return column;
}

// The table as far as its computed columns may look at it.
Table describedTable(const ast::CreateTable& create) {
  Table table;
  table.name = create.table.name;
  for (const ast::ColumnDefinition& definition : create.columns) {
    table.columns.push_back(describedColumn(definition));
  }
  return table;
}

std::string computedColumn(Writer& writer, const ast::ColumnDefinition& definition, Type type) {
  return fmt::format("{} {} GENERATED ALWAYS AS ({}) VIRTUAL", quotedName(definition.name),
                     typeText(type), value(writer, *definition.computedAs));
}

std::string plainColumn(Writer& writer, const ast::ColumnDefinition& definition,
                        const Column& column, bool isKey) {
  const std::string name = quotedName(definition.name);
  if (definition.identity) {
    if (!definition.primaryKey) {
      throw StatementError(Refusal::Unsupported, definition.position,
                           "IDENTITY on a column that is not the primary key");
    }
    return name + " INTEGER PRIMARY KEY AUTOINCREMENT";
  }
  // Only an identity column may be declared INTEGER PRIMARY KEY: SQLite numbers such a column by
  // itself.
  const bool isPlainKey = isKey && column.type.kind == Kind::Int;
  std::string text = name + " " + (isPlainKey ? "INT" : typeText(column.type));
  if (definition.primaryKey) text += " PRIMARY KEY";
  if (definition.notNull || definition.primaryKey) text += " NOT NULL";
  if (definition.defaultValue) {
    text += fmt::format(" DEFAULT ({})", columnValue(writer, *definition.defaultValue, column));
  }
  return text;
}

bool isInKey(const ast::CreateTable& create, const ast::ColumnDefinition& definition) {
  return definition.primaryKey || std::any_of(create.primaryKey.begin(), create.primaryKey.end(),
                                              [&](const std::string& name) {
                                                return text::equalsNoCase(name, definition.name);
                                              });
}

std::string quotedNames(const std::vector<std::string>& names) {
  std::vector<std::string> quoted;
  for (const std::string& name : names) quoted.push_back(quotedName(name));
  return fmt::format("{}", fmt::join(quoted, ", "));
}

}  // namespace

std::string printCreateTable(Writer& writer, const ast::CreateTable& create) {
  const Table table = describedTable(create);
  // A column expression names columns without a table.
  writer.scopes().push_back({{"", &table}});
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < create.columns.size(); ++i) {
    const ast::ColumnDefinition& definition = create.columns[i];
    lines.push_back(
        definition.computedAs
            ? computedColumn(writer, definition, table.columns[i].type)
            : plainColumn(writer, definition, table.columns[i], isInKey(create, definition)));
  }
  writer.scopes().pop_back();
  if (!create.primaryKey.empty()) {
    lines.push_back("PRIMARY KEY (" + quotedNames(create.primaryKey) + ")");
  }
  return fmt::format("CREATE TABLE {} ({})", quotedName(create.table.name), fmt::join(lines, ", "));
}

std::string printAddColumn(Writer& writer, const ast::AddColumn& add, const Table& table) {
  writer.scopes().push_back({{"", &table}});
  const Column column = describedColumn(add.column);
  const std::string text = add.column.computedAs ? computedColumn(writer, add.column, column.type)
                                                 : plainColumn(writer, add.column, column, false);
  writer.scopes().pop_back();
  return fmt::format("ALTER TABLE {} ADD COLUMN {}", quotedName(table.name), text);
}

std::string printCreateIndex(Writer&, const ast::CreateIndex& create) {
  std::vector<std::string> parts;
  for (const ast::CreateIndex::Part& part : create.parts) {
    parts.push_back(quotedName(part.column) + (part.descending ? " DESC" : ""));
  }
  return fmt::format("CREATE {}INDEX {} ON {} ({})", create.unique ? "UNIQUE " : "",
                     quotedName(create.name), quotedName(create.table.name),
                     fmt::join(parts, ", "));
}

}  // namespace tarlo::tsql::sqlite
