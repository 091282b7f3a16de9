// The sub-command "upgrade": adds to an older database what the tables of this program have beyond
// it.

#include <fmt/format.h>

#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/interruption.h"
#include "app/options.h"
#include "app/platform_schema.h"
#include "database/schema_version.h"

namespace tarlo::app {
namespace {

struct UpgradeOptions {
  Words standIns;
  std::string connection;
  bool isDryRun = false;
};

constexpr const char* kFooter =
    "It only adds: missing tables with their indexes and fixed rows, missing columns, the "
    "version.\n"
    "No row that is there is changed. All is done in one transaction, so that a server that runs\n"
    "on the database sees everything or nothing. Back it up all the same. Running it again does\n"
    "nothing.\n";

// A file's name stands for the embedded database in it.
std::string connectionOf(const UpgradeOptions& options, const Words& words) {
  if (words.empty()) return options.connection;
  const std::string& word = words.front();
  return word.find(':') == std::string::npos ? "sqlite:" + word : word;
}

void refuseOthers(database::Connection& connection, const std::string& name) {
  refuseNewer(connection, name);
  if (holdsPlatform(connection)) return;
  throw CommandError(kNoDatabase, fmt::format("{} holds none of the platform's tables; 'tarloquery "
                                              "init' makes them.",
                                              name));
}

void run(database::Connection& connection, const UpgradeStep& step) {
  endWhenInterrupted();
  try {
    connection.execute(step.statement);
  } catch (const RuntimeError& error) {
    throw CommandError(
        kFailed, fmt::format("{}: {}\nNothing was changed.",
                             step.what.empty() ? step.statement : step.what, error.description()));
  }
}

// Gives whether there was anything to do.
bool upgrade(database::Connection& connection, bool isDryRun, std::ostream& out) {
  const auto steps = upgradeSteps(connection);
  const int version = database::storedSchema(connection).version;
  for (const UpgradeStep& step : steps) {
    if (!isDryRun) run(connection, step);
    if (!step.what.empty())
      out << fmt::format("{}: {}\n", step.what, isDryRun ? "is missing" : "added");
  }
  if (version == database::kSchemaVersion) return !steps.empty();
  if (!isDryRun) database::storeSchemaVersion(connection, programName());
  out << fmt::format("version {}: {}\n", database::kSchemaVersion,
                     isDryRun ? "is missing" : "written");
  return true;
}

int runUpgrade(Console console, const UpgradeOptions& options, const Words& words) {
  const std::string name = connectionOf(options, words);
  database::Registry databases;
  database::Lease connection = openForCommand(databases, name).borrow();
  refuseOthers(*connection, name);
  bool isChange = false;
  if (options.isDryRun) {
    isChange = upgrade(*connection, true, console.out);
  } else {
    connection->allowDdl(true);
    connection->setCommandTimeout(std::chrono::milliseconds(0));
    database::Connection::Transaction transaction(*connection);
    isChange = upgrade(*connection, false, console.out);
    transaction.commit();
  }
  if (!isChange) {
    console.out << fmt::format("{} holds version {} already; there is nothing to do.\n", name,
                               database::kSchemaVersion);
  } else if (options.isDryRun) {
    console.out << "Nothing was changed.\n";
  }
  return kDone;
}

}  // namespace

Command addUpgrade(CLI::App& program, Console console) {
  CLI::App* command =
      program.add_subcommand("upgrade", "Add to an older database what this version needs");
  const auto options = std::make_shared<UpgradeOptions>();
  command->add_option("database", options->standIns, "The database, a connection or a file's name")
      ->type_name("DATABASE")
      ->expected(1);
  addDatabaseOption(*command, options->connection);
  command->add_flag("--dry-run", options->isDryRun, "Say what is missing, and change nothing");
  command->footer(std::string(kFooter) + "\n" + std::string(kExitCodeHelp));
  return {command,
          [console, options](const Words& words) { return runUpgrade(console, *options, words); }};
}

}  // namespace tarlo::app
