#pragma once
// A connection to a SQLite file: finds or makes the translation, binds the literals, runs the
// steps, and starts over when the schema turns out to have changed.

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "database/guard.h"
#include "database/pool.h"
#include "database/sqlite/authorizer.h"
#include "database/sqlite/bind.h"
#include "database/sqlite/catalogue.h"
#include "database/sqlite/database_file.h"
#include "database/sqlite/deadline.h"
#include "database/sqlite/errors.h"
#include "database/sqlite/open.h"
#include "database/sqlite/recordset.h"
#include "database/sqlite/statement_cache.h"
#include "database/translation_cache.h"

namespace tarlo::database {

class SqliteConnection final : public PooledConnection {
 public:
  struct Settings {
    std::chrono::milliseconds commandTimeout{30'000};
    std::chrono::milliseconds busyTimeout{5'000};
    bool inMemory = false;
  };
  // The file's, the caches' and the procedures' owner outlives the connection.
  SqliteConnection(SqliteHandle handle, DatabaseFile& file, TranslationCache& translations,
                   const ProcedureTable& procedures, Settings settings);

  void execute(std::string_view sql) override;
  std::unique_ptr<Recordset> open(std::string_view sql) override;
  std::string explainTranslation(std::string_view sql) override;
  tsql::Catalogue& catalogue() override;
  void allowDdl(bool allowed) override { allowDdl_ = allowed; }
  void setContext(const StatementContext* context) override;
  void setCommandTimeout(std::chrono::milliseconds timeout) override {
    deadline_.setLimit(timeout);
  }
  bool isLost() const override { return lost_; }
  void reset() noexcept override;

  // A further step of a statement that this connection runs.
  int nextStep(sqlite3_stmt* statement) {
    const Deadline::Running running(deadline_);
    return sqlite3_step(statement);
  }
  // For its recordsets: a call begins; a call failed.
  void beginCall() { deadline_.restart(); }
  RowBudget* rowBudget() const;
  [[noreturn]] void fail(int code, SqliteCall call) { throw failure(code, call); }
  // The statement that was running is told with the error.
  [[noreturn]] void failRun(int code, sqlite3_stmt* statement);

 protected:
  void begin() override;
  void commit() override;
  void rollback() noexcept override;

 private:
  enum class Want { Nothing, Rows };
  // Whether a run went through, or met another schema than the one it was translated for.
  enum class Outcome { Done, SchemaChanged };
  class WriteScope;
  class Unwatched;

  DatabaseError failure(int code, SqliteCall call);
  // The statement of one call: its text, and its shape, which has no key where the text has none.
  struct Asked {
    std::string_view sql;
    tsql::Shape shape;
  };
  // These fill in the shape.
  TranslationPtr translationOf(Asked& asked);
  TranslationPtr knownOrNew(Asked& asked);
  TranslationPtr translate(const Asked& asked);
  tsql::TranslateOptions translateOptions() const {
    return {tsql::Dialect::Sqlite, allowDdl_, guard_.mayDelete()};
  }
  bool refreshCatalogue();
  bool schemaChanged(const CachedTranslation& translation);

  std::unique_ptr<Recordset> run(std::string_view sql, Want want);
  // Reads the guard's list again when it is older than `life` and the database has changed. Whether
  // it did: other statements have run then.
  bool refreshListed(std::chrono::milliseconds life);
  Outcome runSteps(const TranslationPtr& translation, const Asked& asked, Want want,
                   std::unique_ptr<Recordset>& rows);
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
  void tell(const DatabaseError& error) const noexcept;
  void applyIdentityInsert(const tsql::Translation& translation);
  void execSimple(const char* text);

  SqliteHandle handle_;
  const DatabaseFile::Use use_;  // behind the handle: given up before that is closed
  TranslationCache& translations_;
  Settings settings_;
  Deadline deadline_;
  Guard guard_;
  Authorizer authorizer_{guard_};
  SqliteCatalogue catalogue_;
  SqliteStatement dataVersion_;
  StatementCache statements_;
  tsql::Shape spareShape_;  // of the last statement, for its capacity alone
  bool allowDdl_ = false;
  bool ddlPending_ = false;  // in the open transaction
  bool lost_ = false;
  // When the guard's list of tables was read: SQLite's count of other connections' commits, and of
  // this one's changes.
  struct ListStamp {
    std::int64_t others = -1;
    std::int64_t own = -1;
    bool operator==(const ListStamp&) const = default;
  };
  ListStamp listStamp();
  ListStamp listedAt_;
  // For so long a listed table is taken for listed. Every save of anybody changes the database, and
  // would have the whole list read anew.
  static constexpr std::chrono::milliseconds kListedLife{1'000};
  std::chrono::steady_clock::time_point listedTime_;  // when it was looked at
  std::string identityInsert_;  // folded name of the table it is on for, or ""
};

}  // namespace tarlo::database
