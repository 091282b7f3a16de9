#include "app/platform_schema.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <set>

#include "app/cli.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/platform_scripts.h"
#include "database/schema_version.h"
#include "database/script.h"
#include "text/fold.h"
#include "tsql/parse/parser.h"
#include "tsql/print/tsql_printer.h"

namespace tarlo::app {
namespace {

namespace ast = tsql::ast;

// Walks the scripts' batches and keeps the steps that the database lacks.
class Comparison {
 public:
  explicit Comparison(database::Connection& connection) : connection_(connection) {}

  void add(const database::ScriptBatch& batch) {
    text_ = batch.text;
    const ast::Batch parsed = tsql::parse(batch.text);
    for (const ast::Statement& statement : parsed.statements) {
      std::visit([this](const auto& node) { compare(node); }, statement.node);
    }
  }

  std::vector<UpgradeStep> take() { return std::move(steps_); }

 private:
  void compare(const ast::CreateTable& create) {
    const std::string& name = create.table.name;
    const tsql::Table* table = connection_.catalogue().findTable(name);
    if (table == nullptr) {
      steps_.push_back({"table " + name, text_});
      fresh_.insert(text::foldedName(name));
      return;
    }
    for (const ast::ColumnDefinition& column : create.columns) {
      if (table->find(column.name) >= 0) continue;
      ast::Batch addition;
      addition.statements.push_back({{}, ast::AddColumn{create.table, column}});
      steps_.push_back({fmt::format("column {}.{}", name, column.name), tsql::printTsql(addition)});
      fresh_.insert(columnKey(name, column.name));
    }
  }

  // An index of what has just been made. One that is missing by itself is nothing to stop for.
  void compare(const ast::CreateIndex& create) {
    const std::string& table = create.table.name;
    const bool isFresh = isNew(table) || std::ranges::any_of(create.parts, [&](const auto& part) {
                           return fresh_.contains(columnKey(table, part.column));
                         });
    if (isFresh) steps_.push_back({"", text_});
  }

  // Rows that every installation has are for tables that have none yet.
  void compare(const ast::Insert& insert) {
    if (isNew(insert.table.name)) steps_.push_back({"", text_});
  }
  void compare(const ast::SetOption& option) {
    if (isNew(option.table)) steps_.push_back({"", text_});
  }
  template <class Other>
  void compare(const Other&) {}

  bool isNew(const std::string& table) const { return fresh_.contains(text::foldedName(table)); }
  static std::string columnKey(const std::string& table, const std::string& column) {
    return text::foldedName(table) + "." + text::foldedName(column);
  }

  database::Connection& connection_;
  std::string text_;
  std::vector<UpgradeStep> steps_;
  std::set<std::string> fresh_;  // tables, and columns as "table.column"; folded
};

// A few names are enough to see what kind of database it is.
std::string listOf(const std::vector<UpgradeStep>& steps) {
  constexpr std::size_t kMostNamed = 12;
  std::vector<std::string_view> names;
  for (const UpgradeStep& step : steps) {
    if (!step.what.empty()) names.push_back(step.what);
  }
  const std::size_t more = names.size() - std::min(names.size(), kMostNamed);
  names.resize(names.size() - more);
  return fmt::format("{}{}", fmt::join(names, ", "),
                     more == 0 ? "" : fmt::format(" and {} more", more));
}

}  // namespace

std::vector<UpgradeStep> upgradeSteps(database::Connection& connection) {
  Comparison comparison(connection);
  for (const Script& script : tableScripts()) {
    for (const database::ScriptBatch& batch : database::splitScript(script.text)) {
      comparison.add(batch);
    }
  }
  return comparison.take();
}

bool holdsPlatform(database::Connection& connection) {
  return std::ranges::any_of(tablesMadeBy(tableScripts()), [&](const std::string& table) {
    return connection.catalogue().findTable(table) != nullptr;
  });
}

void refuseNewer(database::Connection& connection, const std::string& name) {
  const database::StoredSchema stored = database::storedSchema(connection);
  if (stored.version <= database::kSchemaVersion) return;
  throw CommandError(
      kNoDatabase,
      fmt::format("{} was written by a newer program ({}): it holds version {} of the tables, this "
                  "program works with version {}.\nInstall that program; nothing was changed.",
                  name, stored.writer, stored.version, database::kSchemaVersion));
}

void requirePlatform(database::Connection& connection, const std::string& name) {
  if (!holdsPlatform(connection)) {
    throw CommandError(
        kNoDatabase,
        fmt::format("{} does not hold the tables of this version.\n'tarloquery init --database "
                    "sqlite:FILE' makes a database; add --demo for one with a demo business.",
                    name));
  }
  refuseNewer(connection, name);
  const std::vector<UpgradeStep> missing = upgradeSteps(connection);
  const int version = database::storedSchema(connection).version;
  if (missing.empty() && version == database::kSchemaVersion) return;
  std::string text = fmt::format(
      "{} holds {} of the tables, this program works with version {}.", name,
      version == 0 ? "no version" : fmt::format("version {}", version), database::kSchemaVersion);
  if (!missing.empty()) text += fmt::format("\nMissing: {}.", listOf(missing));
  throw CommandError(kNoDatabase,
                     text + "\nBack it up; 'tarloquery upgrade' adds what is missing.");
}

database::Database& openPlatform(database::Registry& databases, const std::string& connection) {
  database::Database& database = openForCommand(databases, connection);
  if (!database.isReadOnly()) requirePlatform(*database.borrow(), connection);
  return database;
}

std::string programName() {
  return fmt::format("{} {}", kProgram, version());
}

}  // namespace tarlo::app
