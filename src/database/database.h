#pragma once
// A database by its connection string, with a pool of connections to it. Thread-safe.

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "database/connection.h"
#include "database/health.h"

namespace tarlo::database {

struct OpenOptions {
  bool create = false;    // make the file when it is missing; otherwise a missing file is an error
  bool readOnly = false;  // every write is refused, whoever asks for it
  std::size_t maxConnections = 16;  // a further borrower waits, at most `borrowTimeout`
  std::chrono::milliseconds borrowTimeout{10'000};
  std::chrono::milliseconds busyTimeout{5'000};  // how long a write waits for another process
  std::chrono::milliseconds commandTimeout{30'000};
  // Files that the engine makes for itself while it sorts and groups: of one, and of all
  // connections together. 0 is no limit.
  std::int64_t temporaryBytes = 0;
  std::int64_t temporaryBytesInAll = 0;
  std::size_t valueBytes = 0;  // the longest text that a statement may make; 0: the engine's own
};

class Database;

// A borrowed connection; gives it back when it goes.
class Lease {
 public:
  Lease(Database& database, std::unique_ptr<Connection> connection);
  Lease(Lease&&) noexcept = default;
  Lease& operator=(Lease&&) = delete;
  ~Lease();
  Connection& operator*() { return *connection_; }
  Connection* operator->() { return connection_.get(); }

 private:
  Database* database_;
  std::unique_ptr<Connection> connection_;
};

class Database {
 public:
  virtual ~Database() = default;
  // Throws DatabaseError when no connection can be made or none is free in time.
  virtual Lease borrow() = 0;
  // Names a procedure for EXEC; before the first borrow.
  virtual void addProcedure(std::string name, Procedure procedure) = 0;
  // What can be seen without a statement; `reserve` is how many bytes must be free. Cheap: it waits
  // for nobody. Throws nothing of its own.
  virtual Health health(std::uint64_t reserve) const = 0;
  // A login that only reads.
  virtual bool isReadOnly() const = 0;

 protected:
  friend class Lease;
  virtual void giveBack(std::unique_ptr<Connection> connection) noexcept = 0;
};

// Opens by connection string: `sqlite:<file>`, `sqlite-read:<file>` for a login that only reads,
// `sqlite::memory:` for one that lives with the object, or libpq's own `postgresql://...`
// (`postgres://...`) for a server, whose schema `public` it is unless the string's options name a
// search_path. Throws DatabaseError with a plain
// description: no such file, not a database, read-only where `create` was asked, an unknown engine.
std::unique_ptr<Database> openDatabase(std::string_view connectionString,
                                       const OpenOptions& options = {});

// The databases that a process has open, by connection string, so that "opening" a connection for
// every call costs a look-up. Thread-safe.
class Registry {
 public:
  explicit Registry(OpenOptions options = {}) : options_(options) {}
  // Opens it at the first call. Throws as openDatabase; a failure is not remembered.
  Database& find(std::string_view connectionString);
  // A connection for whom the context is, which outlives the loan; it is told of a database that
  // cannot be had. Throws as openDatabase and Database::borrow.
  Lease borrow(std::string_view connectionString, const StatementContext& context);

 private:
  OpenOptions options_;
  std::mutex mutex_;
  std::map<std::string, std::unique_ptr<Database>, std::less<>> databases_;
};

}  // namespace tarlo::database
