#include "database/sqlite/connection.h"

namespace tarlo::database {

SqliteConnection::SqliteConnection(SqliteHandle handle, DatabaseFile& file,
                                   TranslationCache& translations, const ProcedureTable& procedures,
                                   Settings settings)
    : TranslatingConnection(tsql::Dialect::Sqlite, deadline_, settings.commandTimeout,
                            translations),
      handle_(std::move(handle)),
      use_(file),
      settings_(settings),
      deadline_(settings.commandTimeout, settings.busyTimeout),
      authorizer_(guard()),
      catalogue_(handle_.get(), procedures),
      dataVersion_(prepareSqlite(handle_.get(), "PRAGMA data_version")),
      statements_(handle_.get()) {
  deadline_.install(handle_.get());
  authorizer_.install(handle_.get());
}

TranslatingConnection::ListStamp SqliteConnection::listStamp() {
  ListStamp stamp;
  if (sqlite3_step(dataVersion_.get()) == SQLITE_ROW) {
    stamp = {sqlite3_column_int64(dataVersion_.get(), 0), sqlite3_total_changes64(handle_.get())};
  }
  sqlite3_reset(dataVersion_.get());
  return stamp;
}

DatabaseError SqliteConnection::failure(int code, SqliteCall call) {
  // A database in memory is gone with its connection, so that one is kept whatever happens.
  if (losesConnection(code) && !settings_.inMemory) lost_ = true;
  if ((code & 0xFF) == SQLITE_FULL && code != kTemporaryFilesFull) use_.file().noteFull(true);
  if (!deadline_.wasCancelled()) return sqliteError(handle_.get(), code, call);
  return DatabaseError(
      kCancelled, "The client has gone; its statement was ended.",
      {.engine = "sqlite", .code = code, .sqlState = "57014", .text = sqlite3_errstr(code)});
}

void SqliteConnection::failRun(int code, sqlite3_stmt* statement) {
  DatabaseError error = failure(code, SqliteCall::Run);
  const std::unique_ptr<char, decltype(&sqlite3_free)> text(sqlite3_expanded_sql(statement),
                                                            &sqlite3_free);
  if (text) error.setStatement(text.get());
  tell(error);
  throw error;
}

bool SqliteConnection::refreshTables() {
  if (!catalogue_.refresh()) return false;
  // Translations of another version are never used again, nor is what was prepared from them.
  statements_.clear();
  return true;
}

bool SqliteConnection::schemaChanged(const CachedTranslation& translation) {
  refreshTables();
  return catalogue_.version() != translation.schemaVersion;
}

bool SqliteConnection::isCurrent(const CachedTranslation& translation) {
  return translation.schemaVersion == catalogue_.version() || !schemaChanged(translation);
}

void SqliteConnection::schemaTouched() {
  catalogue_.forget();
  statements_.clear();
  if (!sqlite3_get_autocommit(handle_.get())) ddlPending_ = true;
}

tsql::Translation SqliteConnection::translateNow(std::string_view sql) {
  constexpr int kAttempts = 4;
  tsql::Translation translation;
  // Another process may change the schema while its tables are read.
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    refreshTables();
    translation = tsql::translate(sql, catalogue_, translateOptions());
    if (!refreshTables()) break;
  }
  return translation;
}

void SqliteConnection::execSimple(const char* text) {
  const int code = sqlite3_exec(handle_.get(), text, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) fail(code, SqliteCall::Run);
}

void SqliteConnection::begin() {
  beginCall();
  use_.file().check();
  // Takes the write lock at once: two transactions that both read and then write would otherwise
  // stop each other.
  execSimple("BEGIN IMMEDIATE");
}

void SqliteConnection::commit() {
  beginCall();
  use_.file().check();
  execSimple("COMMIT");
  ddlPending_ = false;
  checkWritten();
}

void SqliteConnection::checkWritten() {
  if (!sqlite3_get_autocommit(handle_.get())) return;
  use_.file().check();
  use_.file().noteFull(false);
}

void SqliteConnection::rollback() noexcept {
  // Some failures have rolled back already.
  if (!sqlite3_get_autocommit(handle_.get())) {
    sqlite3_exec(handle_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
  if (ddlPending_) {
    catalogue_.forget();
    statements_.clear();
    ddlPending_ = false;
  }
}

}  // namespace tarlo::database
