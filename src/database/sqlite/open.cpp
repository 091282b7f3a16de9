#include "database/sqlite/open.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <filesystem>

#include <fmt/format.h>

#include "database/private_files.h"
#include "database/sqlite/errors.h"
#include "database/sqlite/functions.h"

namespace tarlo::database {
namespace {

std::string whyNot(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code ignored;
  const fs::path file(path);
  if (path.empty()) return "The connection string names no database file.";
  if (fs::is_directory(file, ignored)) {
    return fmt::format("{} is a folder, not a database file.", path);
  }
  const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
  if (!fs::exists(folder, ignored)) {
    return fmt::format("The folder of the database file {} does not exist.", path);
  }
  if (!fs::exists(file, ignored)) return fmt::format("There is no database file {}.", path);
  // The log of writes stands beside the file, and even a reader makes its index.
  if (faccessat(AT_FDCWD, folder.c_str(), W_OK, AT_EACCESS) != 0) {
    return fmt::format("The folder of the database file {} cannot be written to.", path);
  }
  return fmt::format("The database file {} cannot be opened.", path);
}

[[noreturn]] void throwUnopenable(const std::string& path, int code, std::string text) {
  throw DatabaseError(kConnectionFailed, whyNot(path),
                      {.engine = "sqlite",
                       .code = code,
                       .sqlState = "08001",
                       .text = std::move(text),
                       .outage = Outage::Failing});
}

void run(sqlite3* handle, const char* text, const std::string& path) {
  const int code = sqlite3_exec(handle, text, nullptr, nullptr, nullptr);
  const bool unopenable = (code & 0xFF) == SQLITE_CANTOPEN || code == SQLITE_READONLY_CANTINIT ||
                          code == SQLITE_READONLY_DIRECTORY;
  if (unopenable) throwUnopenable(path, code, sqlite3_errmsg(handle));
  if (code != SQLITE_OK) throw sqliteError(handle, code, SqliteCall::Open);
}

void setSwitch(sqlite3* handle, int option, int on) {
  const int code = sqlite3_db_config(handle, option, on, nullptr);
  if (code != SQLITE_OK) throw sqliteError(handle, code, SqliteCall::Open);
}

void configure(sqlite3* handle, const OpenOptions& options) {
  sqlite3_extended_result_codes(handle, 1);
  sqlite3_busy_timeout(handle, static_cast<int>(options.busyTimeout.count()));
  // An unknown "name" must be an error, not a text.
  setSwitch(handle, SQLITE_DBCONFIG_DQS_DML, 0);
  setSwitch(handle, SQLITE_DBCONFIG_DQS_DDL, 0);
  setSwitch(handle, SQLITE_DBCONFIG_ENABLE_FKEY, 0);
  // A file may come from elsewhere: its views and triggers get no dangerous function, and no
  // statement can write to the file's own tables.
  setSwitch(handle, SQLITE_DBCONFIG_DEFENSIVE, 1);
  setSwitch(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0);
  setSwitch(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0);
  // A plan does not depend on the values bound, so a prepared statement is made anew only when the
  // schema has changed: that is how a connection notices.
  setSwitch(handle, SQLITE_DBCONFIG_ENABLE_QPSG, 1);
  if (options.valueBytes > 0) {
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH,
                  static_cast<int>(std::min<std::size_t>(options.valueBytes, INT_MAX)));
  }
}

}  // namespace

// SQLite counts its memory under one lock for the whole process, which connections on many threads
// then wait for. Nobody reads the count.
void setUpSqlite() {
  [[maybe_unused]] static const int told = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
}

SqliteStatement prepareSqlite(sqlite3* handle, const char* text) {
  sqlite3_stmt* statement = nullptr;
  const int code =
      sqlite3_prepare_v3(handle, text, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  if (code != SQLITE_OK) throw sqliteError(handle, code, SqliteCall::Prepare);
  return SqliteStatement(statement);
}

SqliteHandle openSqliteFile(const std::string& path, const OpenOptions& options,
                            const ProcedureTable& procedures, const char* vfs) {
  setUpSqlite();
  // SQLite takes "" for a database on disk that vanishes with the connection.
  if (path.empty()) throwUnopenable(path, SQLITE_CANTOPEN, "");
  // One thread at a time uses a connection, so the handle needs no lock of its own.
  int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE;
  flags |= options.readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  if (options.create && !options.readOnly) flags |= SQLITE_OPEN_CREATE;
  // SQLite gives the files that it keeps beside it the mode of the database itself. Where it cannot
  // be made, the opening says why.
  if ((flags & SQLITE_OPEN_CREATE) != 0 && path != ":memory:") makePrivateFile(path);
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &opened, flags, vfs);
  SqliteHandle handle(opened);
  if (code != SQLITE_OK) {
    throwUnopenable(path, code, opened ? sqlite3_errmsg(opened) : sqlite3_errstr(code));
  }
  configure(handle.get(), options);
  const bool readOnly = sqlite3_db_readonly(handle.get(), "main") == 1;
  if (readOnly && options.create) {
    throw DatabaseError(
        kConnectionFailed, fmt::format("The database file {} can only be read.", path),
        {.engine = "sqlite", .code = SQLITE_READONLY, .sqlState = "08001", .text = ""});
  }
  // Readers and a writer do not stop each other in this mode. The file remembers it.
  if (!readOnly) run(handle.get(), "PRAGMA journal_mode=WAL", path);
  // With the log, NORMAL leaves the file whole but may lose the last commits when the power fails.
  // A page that has said "saved" must be right, so every commit waits for the disk.
  run(handle.get(), "PRAGMA synchronous=FULL", path);
  // In KiB, for each connection, of which there are about as many as threads: enough for the scheme
  // table's busy part, where a search reads every row. SQLite's own 2 MiB made the first page of
  // 100 000 schemes a third slower.
  run(handle.get(), "PRAGMA cache_size=-8000", path);
  // The first read: a file that is no database is told here.
  run(handle.get(), "PRAGMA schema_version", path);
  registerSqliteFunctions(handle.get(), procedures);
  return handle;
}

}  // namespace tarlo::database
