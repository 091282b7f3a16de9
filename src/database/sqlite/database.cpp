#include "database/sqlite/database.h"

#include "database/pool.h"
#include "database/sqlite/connection.h"
#include "database/sqlite/open.h"

namespace tarlo::database {
namespace {

constexpr std::string_view kInMemory = ":memory:";

class SqliteDatabase final : public PooledDatabase {
 public:
  SqliteDatabase(std::string path, const OpenOptions& options)
      : PooledDatabase(options), path_(std::move(path)) {
    if (path_ == kInMemory) {
      inMemory_ = true;
      // Every connection would have a database of its own.
      options_.maxConnections = 1;
    }
  }

 protected:
  std::unique_ptr<PooledConnection> connect() override {
    SqliteConnection::Settings settings;
    settings.commandTimeout = options_.commandTimeout;
    settings.inMemory = inMemory_;
    return std::make_unique<SqliteConnection>(openSqliteFile(path_, options_, procedures_),
                                              translations_, procedures_, settings);
  }

 private:
  std::string path_;
  bool inMemory_ = false;
};

}  // namespace

std::unique_ptr<Database> openSqliteDatabase(std::string path, const OpenOptions& options) {
  auto database = std::make_unique<SqliteDatabase>(std::move(path), options);
  // A database that cannot be opened is told now, not at its first use.
  const Lease trial = database->borrow();
  return database;
}

}  // namespace tarlo::database
