#pragma once
// A connection to a SQLite file: prepares and binds the steps of translations, runs them, and
// notices a changed schema by the file's version number.

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "database/sqlite/authorizer.h"
#include "database/sqlite/bind.h"
#include "database/sqlite/catalogue.h"
#include "database/sqlite/database_file.h"
#include "database/sqlite/deadline.h"
#include "database/sqlite/errors.h"
#include "database/sqlite/open.h"
#include "database/sqlite/recordset.h"
#include "database/sqlite/statement_cache.h"
#include "database/translating_connection.h"

namespace tarlo::database {

class SqliteConnection final : public TranslatingConnection {
 public:
  struct Settings {
    std::chrono::milliseconds commandTimeout{30'000};
    std::chrono::milliseconds busyTimeout{5'000};
    bool inMemory = false;
  };
  // The file's, the caches' and the procedures' owner outlives the connection.
  SqliteConnection(SqliteHandle handle, DatabaseFile& file, TranslationCache& translations,
                   const ProcedureTable& procedures, Settings settings);

  bool isLost() const override { return lost_; }

  // A further step of a statement that this connection runs.
  int nextStep(sqlite3_stmt* statement) {
    const SqliteDeadline::Running running(deadline_);
    return sqlite3_step(statement);
  }
  // For its recordsets: a call failed.
  [[noreturn]] void fail(int code, SqliteCall call) { throw failure(code, call); }
  // The statement that was running is told with the error.
  [[noreturn]] void failRun(int code, sqlite3_stmt* statement);

 protected:
  void begin() override;
  void commit() override;
  void rollback() noexcept override;

  tsql::Catalogue& tables() override { return catalogue_; }
  bool refreshTables() override;
  bool isCurrent(const CachedTranslation& translation) override;
  tsql::Translation translateNow(std::string_view sql) override;
  void stamp(CachedTranslation& made) override { made.schemaVersion = catalogue_.version(); }
  ListStamp listStamp() override;
  bool isDdlPending() const override { return ddlPending_; }
  Outcome runSteps(const TranslationPtr& translation, const Asked& asked, Want want,
                   std::unique_ptr<Recordset>& rows) override;

 private:
  class WriteScope;

  DatabaseError failure(int code, SqliteCall call);
  bool schemaChanged(const CachedTranslation& translation);

  Outcome runStep(const TranslationPtr& translation, std::size_t index, const Asked& asked,
                  Want want, std::unique_ptr<Recordset>& rows);
  // Empty when the schema has changed.
  StatementCache::Use prepare(const TranslationPtr& translation, std::size_t key,
                              const tsql::Step& step);
  void bind(const StatementCache::Use& use, const tsql::Step& step, const Asked& asked,
            TextLife life);
  Outcome runRows(StatementCache::Use& use, int& code);
  int firstStep(const StatementCache::Use& use);
  void runWrite(const StatementCache::Use& use, std::vector<Variant>& returned);
  void schemaTouched();
  // What was written counts only when it stands where it will be looked for.
  void checkWritten();
  void execSimple(const char* text);

  SqliteHandle handle_;
  const DatabaseFile::Use use_;  // behind the handle: given up before that is closed
  Settings settings_;
  SqliteDeadline deadline_;
  Authorizer authorizer_;
  SqliteCatalogue catalogue_;
  SqliteStatement dataVersion_;  // SQLite's count of other connections' commits
  StatementCache statements_;
  bool ddlPending_ = false;  // in the open transaction
  bool lost_ = false;
};

}  // namespace tarlo::database
