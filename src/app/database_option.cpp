#include "app/database_option.h"

#include <fmt/format.h>

#include "app/exit_code.h"

namespace tarlo::app {

void addDatabaseOption(CLI::App& command, std::string& connection) {
  connection = kDefaultDatabase;
  command
      .add_option("-d,--database", connection,
                  "The database, sqlite:FILE; sqlite-read:FILE writes nothing")
      ->type_name("CONN")
      ->capture_default_str();
}

database::Database& openForCommand(database::Registry& databases, const std::string& connection) {
  try {
    database::Database& database = databases.find(connection);
    database.borrow();
    return database;
  } catch (const RuntimeError& error) {
    throw CommandError(
        kNoDatabase,
        fmt::format("{}: {}\n--database names the database, 'tarloquery init' makes one.",
                    connection, error.description()));
  }
}

}  // namespace tarlo::app
