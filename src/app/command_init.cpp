// The sub-command "init": makes a database with the platform's tables, and the demo business when
// asked.

#include <fmt/format.h>

#include <filesystem>
#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/new_file.h"
#include "app/options.h"
#include "app/platform_schema.h"
#include "app/platform_scripts.h"
#include "app/terminal.h"
#include "database/schema_version.h"
#include "frame/data.h"
#include "frame/local_page.h"
#include "scheme/scheme_store.h"
#include "text/sql_text.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::app {
namespace {

constexpr std::string_view kSqlite = "sqlite:";

struct InitOptions {
  std::string connection;
  bool demo = false;
};

constexpr const char* kFooter =
    "The file and its folder are made when they are missing. A database that has tables of its "
    "own\n"
    "gets the platform's beside them; one that holds any of the platform's tables is left as it "
    "is.\n"
    "All is done in one transaction, and a new file takes its name when it is complete, so that\n"
    "nothing half made is ever found under that name.\n";

// The statements of the demo schemes, compiled as they would be when a designer saves them.
struct DemoStatement {
  int schemeId = 0;
  std::string statement;
};

constexpr std::string_view kInMemory = "sqlite::memory:";

// Deleted schemes too: they were saved like the others once.
std::vector<int> schemeIds(Page& page) {
  std::vector<int> ids;
  for (const frame::Row row :
       frame::rows(page, "select Query_ID from Zembra_Query_Main order by Query_ID")) {
    ids.push_back(variant::toInt32(row.value(0)));
  }
  return ids;
}

DemoStatement compileOne(Page& page, int id) {
  ErrorState error;
  DemoStatement compiled{id, {}};
  error.run([&] {
    const auto scheme = scheme::loadScheme(page, id);
    if (scheme) compiled.statement = compile::compileDefinition(page, scheme->definition);
  });
  if (error.failed()) {
    throw CommandError(
        kFailed, fmt::format("The demo scheme {} cannot be compiled: {}", id, error.description()));
  }
  return compiled;
}

// Builds the demo business in memory and compiles every scheme of it. Compiling reads through
// connections of its own, which could not see the rows of a transaction that is still open. Throws
// CommandError (kFailed) for a script or a scheme that fails.
std::vector<DemoStatement> compileDemo(std::ostream& err) {
  database::Registry databases({.create = true});
  {
    database::Lease connection = databases.find(kInMemory).borrow();
    connection->allowDdl(true);
    database::Connection::Transaction transaction(*connection);
    runScripts(*connection, tableScripts());
    runScripts(*connection, demoScripts());
    transaction.commit();
  }
  frame::LocalPage local(databases, kInMemory);
  const std::vector<int> ids = schemeIds(local.page());
  Progress progress(err, "compiling", ids.size());
  std::vector<DemoStatement> statements;
  for (const int id : ids) {
    statements.push_back(compileOne(local.page(), id));
    progress.advance();
  }
  return statements;
}

void storeStatement(database::Connection& connection, const DemoStatement& scheme) {
  connection.execute(fmt::format("update Zembra_Query_Main set Query_Fields='{}' where Query_ID={}",
                                 text::doubledQuotes(scheme.statement), scheme.schemeId));
}

void refuseWhenThere(database::Connection& connection, const std::string& name) {
  for (const std::string& table : tablesMadeBy(tableScripts())) {
    if (connection.catalogue().findTable(table) == nullptr) continue;
    throw CommandError(
        kAlreadyThere,
        fmt::format("{} holds the table {} already; nothing was changed.", name, table));
  }
}

// Everything in one transaction. `name` is what people call the database.
void build(const std::string& connectionString, const std::string& name, bool demo,
           const std::vector<DemoStatement>& statements) {
  const auto database = database::openDatabase(connectionString, {.create = true});
  database::Lease connection = database->borrow();
  connection->allowDdl(true);
  connection->setCommandTimeout(std::chrono::milliseconds(0));
  database::Connection::Transaction transaction(*connection);
  refuseWhenThere(*connection, name);
  runScripts(*connection, tableScripts());
  database::storeSchemaVersion(*connection, programName());
  if (demo) {
    runScripts(*connection, demoScripts());
    for (const DemoStatement& scheme : statements) storeStatement(*connection, scheme);
    runScripts(*connection, laterDemoScripts());
  }
  transaction.commit();
}

void buildNewFile(const std::filesystem::path& file, bool demo,
                  const std::vector<DemoStatement>& statements) {
  NewFile fresh(file);
  build(std::string(kSqlite) + fresh.path().string(), file.string(), demo, statements);
  fresh.publish();
}

int runInit(Console console, const InitOptions& options) {
  if (!options.connection.starts_with(kSqlite) || options.connection == "sqlite::memory:" ||
      options.connection == kSqlite) {
    throw CommandError(kUsage, "init makes a database in a file: --database sqlite:FILE.");
  }
  const std::filesystem::path file = options.connection.substr(kSqlite.size());
  const auto statements = options.demo ? compileDemo(console.err) : std::vector<DemoStatement>();
  try {
    std::error_code ignored;
    if (std::filesystem::exists(file, ignored)) {
      build(options.connection, file.string(), options.demo, statements);
    } else {
      buildNewFile(file, options.demo, statements);
    }
  } catch (const RuntimeError& error) {
    throw CommandError(kNoDatabase, error.description());
  }
  console.out << fmt::format("{} is ready: {} tables", file.string(),
                             tablesMadeBy(tableScripts()).size());
  if (options.demo)
    console.out << fmt::format(", the demo business, {} schemes", statements.size());
  console.out << '\n';
  return kDone;
}

}  // namespace

Command addInit(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("init", "Make a database");
  const auto options = std::make_shared<InitOptions>();
  addDatabaseOption(*command, options->connection);
  command->add_flag("--demo", options->demo, "With a demo business and schemes on it");
  command->footer(std::string(kFooter) + "\n" + std::string(kExitCodeHelp));
  return {command, [console, options](const Words&) { return runInit(console, *options); }};
}

}  // namespace tarlo::app
