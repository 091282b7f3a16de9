#include "database/sqlite/database.h"

#include "database/pool.h"
#include "database/sqlite/connection.h"
#include "database/sqlite/database_file.h"
#include "database/sqlite/open.h"
#include "database/sqlite/temporary_files.h"

namespace tarlo::database {
namespace {

constexpr std::string_view kInMemory = ":memory:";

class SqliteDatabase final : public PooledDatabase {
 public:
  SqliteDatabase(std::string path, const OpenOptions& options)
      : PooledDatabase(options),
        path_(std::move(path)),
        file_(path_ == kInMemory ? "" : path_),
        temporaryFiles_(options.temporaryBytes, options.temporaryBytesInAll) {
    if (path_ == kInMemory) {
      inMemory_ = true;
      // Every connection would have a database of its own.
      options_.maxConnections = 1;
    }
  }

  ~SqliteDatabase() override { closeIdle(); }

  Health health(std::uint64_t reserve) const override {
    return file_.health(reserve, !options_.readOnly);
  }
  bool isReadOnly() const override { return options_.readOnly; }
  // Its file is there; one that vanishes is not made anew.
  void isMade() { options_.create = false; }

 protected:
  std::unique_ptr<PooledConnection> connect() override {
    // Before SQLite makes a log of its own beside a file that is not the one of the others.
    file_.check();
    SqliteConnection::Settings settings;
    settings.commandTimeout = options_.commandTimeout;
    settings.busyTimeout = options_.busyTimeout;
    settings.inMemory = inMemory_;
    return std::make_unique<SqliteConnection>(
        openSqliteFile(path_, options_, procedures_, temporaryFiles_.vfsName()), file_,
        translations_, procedures_, settings);
  }

 private:
  std::string path_;
  DatabaseFile file_;
  TemporaryFiles temporaryFiles_;
  bool inMemory_ = false;
};

}  // namespace

std::unique_ptr<Database> openSqliteDatabase(std::string path, const OpenOptions& options) {
  auto database = std::make_unique<SqliteDatabase>(std::move(path), options);
  // A database that cannot be opened is told now, not at its first use.
  const Lease trial = database->borrow();
  database->isMade();
  return database;
}

}  // namespace tarlo::database
