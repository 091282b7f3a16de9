#include "database/database.h"

#include <fmt/format.h>

#include "database/postgresql/database.h"
#include "database/sqlite/database.h"

namespace tarlo::database {

Lease::Lease(Database& database, std::unique_ptr<Connection> connection)
    : database_(&database), connection_(std::move(connection)) {}

Lease::~Lease() {
  if (connection_) database_->giveBack(std::move(connection_));
}

std::unique_ptr<Database> openDatabase(std::string_view connectionString,
                                       const OpenOptions& options) {
  constexpr std::string_view kSqlite = "sqlite:";
  constexpr std::string_view kSqliteRead = "sqlite-read:";
  if (connectionString.starts_with(kSqlite)) {
    return openSqliteDatabase(std::string(connectionString.substr(kSqlite.size())), options);
  }
  if (connectionString.starts_with(kSqliteRead)) {
    OpenOptions reading = options;
    reading.readOnly = true;
    return openSqliteDatabase(std::string(connectionString.substr(kSqliteRead.size())), reading);
  }
  if (connectionString.starts_with("postgresql://") ||
      connectionString.starts_with("postgres://")) {
    return openPostgresqlDatabase(std::string(connectionString), options);
  }
  // The string may hold a password, so only what stands in front of the colon is shown.
  const std::string_view engine = connectionString.substr(0, connectionString.find(':'));
  const std::string text =
      engine.size() == connectionString.size()
          ? "The connection string names no engine; it must begin with \"sqlite:\" or "
            "\"postgresql://\"."
          : fmt::format(
                "There is no database engine \"{}\"; the known ones are \"sqlite\" and "
                "\"postgresql\".",
                engine);
  throw DatabaseError(kConnectionFailed, text,
                      {.engine = "", .code = 0, .sqlState = "08001", .text = text});
}

Database& Registry::find(std::string_view connectionString) {
  const std::lock_guard lock(mutex_);
  const auto found = databases_.find(connectionString);
  if (found != databases_.end()) return *found->second;
  auto opened = openDatabase(connectionString, options_);
  return *databases_.emplace(connectionString, std::move(opened)).first->second;
}

Lease Registry::borrow(std::string_view connectionString, const StatementContext& context) {
  try {
    Lease lease = find(connectionString).borrow();
    lease->setContext(&context);
    return lease;
  } catch (const DatabaseError& error) {
    context.tell(error);
    throw;
  }
}

}  // namespace tarlo::database
