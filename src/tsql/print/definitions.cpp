// CREATE TABLE, ALTER TABLE and CREATE INDEX.

#include <fmt/format.h>

#include <algorithm>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/print/printing.h"
#include "tsql/resolve/type_names.h"

namespace tarlo::tsql::print {
namespace {

Column describedColumn(const Engine& engine, const ast::ColumnDefinition& definition) {
  Column column;
  column.name = engine.newName(definition.name, definition.position);
  column.type = definition.computedAs ? definition.computedAs->type
                                      : typeOf(definition.typeName, definition.typeSizes,
                                               TypeUse::Declaration, definition.position);
  column.isNullable = !definition.notNull && !definition.primaryKey;
  return column;
}

// The table as far as its computed columns may look at it.
Table describedTable(const Engine& engine, const ast::CreateTable& create) {
  Table table;
  table.name = create.table.name;
  for (const ast::ColumnDefinition& definition : create.columns) {
    table.columns.push_back(describedColumn(engine, definition));
  }
  return table;
}

std::string computedColumn(Writer& writer, const ast::ColumnDefinition& definition,
                           const Column& column) {
  const Engine& engine = writer.engine();
  return fmt::format("{} {} GENERATED ALWAYS AS ({}) {}", quotedName(column.name),
                     engine.columnType(definition, column.type, false),
                     value(writer, *definition.computedAs), engine.generatedStorage());
}

std::string plainColumn(Writer& writer, const ast::ColumnDefinition& definition,
                        const Column& column, bool isKey) {
  const std::string name = quotedName(column.name);
  if (definition.identity) {
    if (!definition.primaryKey) {
      throw StatementError(Refusal::Unsupported, definition.position,
                           "IDENTITY on a column that is not the primary key");
    }
    return fmt::format("{} {}", name, writer.engine().identityType());
  }
  std::string text = name + " " + writer.engine().columnType(definition, column.type, isKey);
  if (definition.primaryKey) text += " PRIMARY KEY";
  if (definition.notNull || definition.primaryKey) text += " NOT NULL";
  if (definition.defaultValue) {
    text += fmt::format(" DEFAULT ({})", writtenValue(writer, *definition.defaultValue, column));
  }
  return text;
}

bool isInKey(const ast::CreateTable& create, const ast::ColumnDefinition& definition) {
  return definition.primaryKey || std::any_of(create.primaryKey.begin(), create.primaryKey.end(),
                                              [&](const std::string& name) {
                                                return text::equalsNoCase(name, definition.name);
                                              });
}

std::string tableName(const Engine& engine, const ast::TableName& name) {
  return engine.newName(name.name, {});
}

}  // namespace

std::string printCreateTable(Writer& writer, const ast::CreateTable& create) {
  const Engine& engine = writer.engine();
  const Table table = describedTable(engine, create);
  // A column expression names columns without a table.
  writer.scopes().push_back({{{"", &table}}});
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < create.columns.size(); ++i) {
    const ast::ColumnDefinition& definition = create.columns[i];
    lines.push_back(definition.computedAs ? computedColumn(writer, definition, table.columns[i])
                                          : plainColumn(writer, definition, table.columns[i],
                                                        isInKey(create, definition)));
  }
  writer.scopes().pop_back();
  if (!create.primaryKey.empty()) {
    std::vector<std::string> names;
    for (const std::string& name : create.primaryKey) {
      names.push_back(quotedName(engine.newName(name, {})));
    }
    lines.push_back(fmt::format("PRIMARY KEY ({})", fmt::join(names, ", ")));
  }
  return fmt::format("CREATE TABLE {} ({})", quotedName(tableName(engine, create.table)),
                     fmt::join(lines, ", "));
}

std::string printKeyIndex(Writer& writer, const ast::CreateTable& create) {
  Table table = describedTable(writer.engine(), create);
  table.name = tableName(writer.engine(), create.table);
  for (std::size_t i = 0; i < create.columns.size(); ++i) {
    if (create.columns[i].primaryKey) table.key.push_back(i);
  }
  for (const std::string& name : create.primaryKey) {
    table.key.push_back(static_cast<std::size_t>(table.find(name)));
  }
  for (const std::size_t index : table.key) table.columns[index].isNullable = false;
  return writer.engine().keyIndex(table);
}

std::string printAddColumn(Writer& writer, const ast::AddColumn& add, const Table& table) {
  writer.scopes().push_back({{{"", &table}}});
  const Column column = describedColumn(writer.engine(), add.column);
  const std::string text = add.column.computedAs ? computedColumn(writer, add.column, column)
                                                 : plainColumn(writer, add.column, column, false);
  writer.scopes().pop_back();
  return fmt::format("ALTER TABLE {} ADD COLUMN {}", quotedName(table.name), text);
}

std::string printCreateIndex(Writer& writer, const ast::CreateIndex& create, const Table& table) {
  const Engine& engine = writer.engine();
  std::vector<std::string> parts;
  for (const ast::CreateIndex::Part& part : create.parts) {
    Column column = table.columns[static_cast<std::size_t>(table.find(part.column))];
    column.name = engine.indexedName(part.column, column.name);
    parts.push_back(engine.indexPart(column, part.descending));
  }
  return fmt::format("CREATE {}INDEX {} ON {} ({})", create.unique ? "UNIQUE " : "",
                     quotedName(engine.newName(create.name, {})),
                     quotedName(engine.indexedName(create.table.name, table.name)),
                     fmt::join(parts, ", "));
}

}  // namespace tarlo::tsql::print
