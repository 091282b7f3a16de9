#include "tsql/print/printer.h"

#include <fmt/format.h>

#include "tsql/error.h"
#include "tsql/limits.h"
#include "tsql/print/printing.h"

namespace tarlo::tsql {
namespace {

using namespace print;

// The steps of a batch, in order.
class BatchPrinter {
 public:
  BatchPrinter(Writer& writer, Translation& translation)
      : writer_(writer), translation_(translation) {}

  void operator()(const ast::Select& select) {
    // The procedure's value is selected by its EXEC.
    if (declared_) return;
    add(StepRole::Rows, printQuery(writer_, select.query, RowOrder::Ordered));
  }

  void operator()(const ast::Insert& insert) {
    const Table& table = writer_.table(insert.table, position);
    const std::vector<const Column*> columns = writtenColumns(insert, table);
    noteIdentity(insert, table, columns);
    const std::string text = insertHead(table, columns) + insertRows(insert, columns);
    Step step = writer_.finishStep(StepRole::Write, text);
    for (const Column& column : table.columns) {
      if (!column.isIdentity) continue;
      translation_.identityColumn = column.name;
      translation_.identityStep = {StepRole::Rows, text + " RETURNING " + quotedName(column.name),
                                   step.parameters};
    }
    translation_.steps.push_back(std::move(step));
  }

  void operator()(const ast::Update& update) {
    const Table& table = writer_.table(update.table, position);
    const std::string alias = writer_.newAlias();
    writer_.scopes().push_back({{{alias, &table}}});
    std::vector<std::string> assignments;
    for (const ast::Assignment& assignment : update.assignments) {
      const Column& column = findColumn(table, assignment.column, assignment.position);
      assignments.push_back(quotedName(column.name) + " = " +
                            writtenValue(writer_, assignment.value, column));
    }
    std::string text = fmt::format("UPDATE {} AS {} SET {}", quotedName(table.name), alias,
                                   fmt::join(assignments, ", "));
    if (update.where) text += " WHERE " + printCondition(writer_, *update.where);
    writer_.scopes().pop_back();
    add(StepRole::Write, std::move(text));
  }

  void operator()(const ast::Delete& remove) {
    const Table& table = writer_.table(remove.table, position);
    const std::string alias = writer_.newAlias();
    writer_.scopes().push_back({{{alias, &table}}});
    std::string text = fmt::format("DELETE FROM {} AS {} WHERE {}", quotedName(table.name), alias,
                                   printCondition(writer_, remove.where));
    writer_.scopes().pop_back();
    add(StepRole::Write, std::move(text));
  }

  void operator()(const ast::AddColumn& addition) {
    const Table& table = writer_.table(addition.table, position);
    add(StepRole::Ddl, printAddColumn(writer_, addition, table));
  }

  void operator()(const ast::CreateTable& create) {
    add(StepRole::Ddl, printCreateTable(writer_, create));
    std::string index = printKeyIndex(writer_, create);
    if (!index.empty()) add(StepRole::Ddl, std::move(index));
  }

  void operator()(const ast::CreateIndex& create) {
    const Table& table = writer_.table(create.table, position);
    add(StepRole::Ddl, printCreateIndex(writer_, create, table));
  }

  void operator()(const ast::SetOption& option) {
    if (option.option != "IDENTITY_INSERT") return;
    translation_.identityInsertTable = option.table;
    translation_.identityInsertOn = option.on;
  }

  void operator()(const ast::Declare&) { declared_ = true; }

  void operator()(const ast::Execute& execute) {
    std::vector<std::string> inputs;
    for (const auto& argument : execute.arguments) {
      if (!argument.out) inputs.push_back(value(writer_, argument.value));
    }
    add(StepRole::Rows, writer_.engine().execute(execute, inputs, translation_));
  }

  Position position;

 private:
  void add(StepRole role, std::string text) {
    translation_.steps.push_back(writer_.finishStep(role, std::move(text)));
  }

  // An identity that the INSERT gives itself: the engine goes on behind it, and the batch is told
  // of the last one.
  void noteIdentity(const ast::Insert& insert, const Table& table,
                    const std::vector<const Column*>& columns) {
    if (!writer_.engine().mustBeToldIdentities()) return;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (!columns[i]->isIdentity) continue;
      std::vector<std::string> stored;
      for (const auto& row : insert.rows) stored.push_back(value(writer_, row[i]));
      if (insert.query) {
        const std::string rows = printQuery(writer_, *insert.query, RowOrder::Any);
        stored.push_back(
            fmt::format("(SELECT max(c{}) FROM ({}){})", i + 1, rows, writer_.derivedAlias()));
      } else {
        writer_.explicitIdentity = &insert.rows.back()[i];
      }
      add(StepRole::Rows, writer_.engine().identityNotice(table, *columns[i], stored));
    }
  }

  static const Column& findColumn(const Table& table, const std::string& name, Position at) {
    const int index = table.find(name);
    if (index < 0) throw StatementError(Refusal::Name, at, "unknown column " + name);
    return table.columns[static_cast<std::size_t>(index)];
  }

  std::vector<const Column*> writtenColumns(const ast::Insert& insert, const Table& table) const {
    std::vector<const Column*> columns;
    for (const std::string& name : insert.columns) {
      columns.push_back(&findColumn(table, name, position));
    }
    if (!columns.empty()) return columns;
    for (const Column& column : table.columns) {
      if (!column.isIdentity && !column.isGenerated) columns.push_back(&column);
    }
    return columns;
  }

  std::string insertHead(const Table& table, const std::vector<const Column*>& columns) const {
    std::vector<std::string> names;
    bool hasIdentity = false;
    for (const Column* column : columns) {
      names.push_back(quotedName(column->name));
      hasIdentity = hasIdentity || column->isIdentity;
    }
    return fmt::format("INSERT INTO {} ({}){}", quotedName(table.name), fmt::join(names, ", "),
                       hasIdentity ? writer_.engine().identityOverride() : "");
  }

  std::string insertRows(const ast::Insert& insert, const std::vector<const Column*>& columns) {
    if (insert.query) return insertQuery(*insert.query, columns);
    std::vector<std::string> rows;
    for (const auto& row : insert.rows) {
      std::vector<std::string> values;
      for (std::size_t i = 0; i < row.size(); ++i) {
        values.push_back(writtenValue(writer_, row[i], *columns[i]));
      }
      rows.push_back(fmt::format("({})", fmt::join(values, ", ")));
    }
    return fmt::format(" VALUES {}", fmt::join(rows, ", "));
  }

  // The query's columns become what their target columns store in a query round it.
  std::string insertQuery(const ast::Query& query, const std::vector<const Column*>& columns) {
    std::vector<std::string> items;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      // Items have been converted to the column's kind, but neither rounded nor measured.
      const ast::Expr& item = *query.parts[0].items[i].expr;
      Type from = item.wanted.kind == Kind::Null ? item.type : item.wanted;
      from.length = 0;
      items.push_back(writer_.engine().written(fmt::format("c{}", i + 1), from, *columns[i]));
    }
    const std::string rows = printQuery(writer_, query, RowOrder::Ordered);
    return fmt::format(" SELECT {} FROM ({}){}", fmt::join(items, ", "), rows,
                       writer_.derivedAlias());
  }

  Writer& writer_;
  Translation& translation_;
  bool declared_ = false;
};

bool hasTooManyParameters(const Translation& translation) {
  for (const Step& step : translation.steps) {
    if (step.parameters.size() > kMaxLiftedLiterals) return true;
  }
  return false;
}

void printBatch(const Engine& engine, const ast::Batch& batch, Catalogue& catalogue,
                Literals literals, Translation& translation) {
  Writer writer(engine, catalogue, translation, literals);
  BatchPrinter printer(writer, translation);
  for (const ast::Statement& statement : batch.statements) {
    printer.position = statement.position;
    std::visit(printer, statement.node);
  }
}

}  // namespace

void printFor(Dialect dialect, const ast::Batch& batch, Catalogue& catalogue,
              Translation& translation) {
  const Engine& engine = dialect == Dialect::Postgresql ? postgresqlEngine() : sqliteEngine();
  const Translation empty = translation;
  printBatch(engine, batch, catalogue, Literals::Lifted, translation);
  if (hasTooManyParameters(translation)) {
    translation = empty;
    printBatch(engine, batch, catalogue, Literals::Inline, translation);
  }
}

}  // namespace tarlo::tsql
