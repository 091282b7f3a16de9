#pragma once
// What the connections of all engines have in common: a call finds or makes the translation of its
// T-SQL, holds it to the rights of the borrower, runs its steps, and starts over when the tables
// turn out to have changed. An engine adds its tables and how steps are run.

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "database/deadline.h"
#include "database/guard.h"
#include "database/pool.h"
#include "database/translation_cache.h"

namespace tarlo::database {

class TranslatingConnection : public PooledConnection {
 public:
  void execute(std::string_view sql) override;
  std::unique_ptr<Recordset> open(std::string_view sql) override;
  std::string explainTranslation(std::string_view sql) override;
  tsql::Catalogue& catalogue() override;
  void allowDdl(bool allowed) override { allowDdl_ = allowed; }
  void setContext(const StatementContext* context) override;
  void setCommandTimeout(std::chrono::milliseconds timeout) override {
    deadline_.setLimit(timeout);
  }
  void reset() noexcept override;

  // For the recordsets of this connection: a call begins, and what its rows may cost.
  void beginCall() { deadline_.restart(); }
  RowBudget* rowBudget() const;

 protected:
  enum class Want { Nothing, Rows };
  // Whether a run went through, or met other tables than those it was translated for.
  enum class Outcome { Done, SchemaChanged };
  // The statement of one call: its text, and its shape, which has no key where the text has none.
  struct Asked {
    std::string_view sql;
    tsql::Shape shape;
  };
  // When the guard's list of tables was read, by numbers that change with the database.
  struct ListStamp {
    std::int64_t others = -1;
    std::int64_t own = -1;
    bool operator==(const ListStamp&) const = default;
  };
  // Nobody is asked whether the statement is wanted: a write goes on when its client has left. What
  // was asked for is done, or not at all.
  class Unwatched {
   public:
    Unwatched(TranslatingConnection& connection, bool wanted)
        : connection_(connection), wanted_(wanted) {
      if (wanted) connection.deadline_.watch(nullptr);
    }
    ~Unwatched() {
      if (wanted_) connection_.setContext(connection_.guard_.context());
    }
    Unwatched(const Unwatched&) = delete;
    Unwatched& operator=(const Unwatched&) = delete;

   private:
    TranslatingConnection& connection_;
    bool wanted_;
  };

  // The deadline is the engine's own, and the cache's owner outlives the connection.
  TranslatingConnection(tsql::Dialect dialect, Deadline& deadline,
                        std::chrono::milliseconds commandTimeout, TranslationCache& translations)
      : dialect_(dialect),
        commandTimeout_(commandTimeout),
        deadline_(deadline),
        translations_(translations) {}

  // The engine's part.
  virtual tsql::Catalogue& tables() = 0;
  // Looks whether tables that have been read are as they were. When not, forgets them and returns
  // true.
  virtual bool refreshTables() = 0;
  // Whether a kept translation still holds, as far as can be told before it runs.
  virtual bool isCurrent(const CachedTranslation& translation) = 0;
  // Translates against the tables as they are now. Throws StatementError.
  virtual tsql::Translation translateNow(std::string_view sql) = 0;
  // Notes what the translation was made against.
  virtual void stamp(CachedTranslation& made) = 0;
  virtual ListStamp listStamp() = 0;
  // Whether the open transaction has changed the tables.
  virtual bool isDdlPending() const = 0;
  virtual Outcome runSteps(const TranslationPtr& translation, const Asked& asked, Want want,
                           std::unique_ptr<Recordset>& rows) = 0;

  std::unique_ptr<Recordset> run(std::string_view sql, Want want);
  // Fills in the shape. Throws DatabaseError, also for what the borrower may not touch.
  TranslationPtr translationOf(Asked& asked);
  tsql::TranslateOptions translateOptions() const {
    return {dialect_, allowDdl_, guard_.mayDelete()};
  }
  // Keeps the rules of IDENTITY_INSERT, before the steps run.
  void applyIdentityInsert(const tsql::Translation& translation);
  // A literal that does not convert: the error with its place in this text, which only a
  // translation from the text knows.
  [[noreturn]] void refuseLiteral(const Asked& asked, const tsql::StatementError& error);
  void tell(const DatabaseError& error) const noexcept;
  const Guard& guard() const { return guard_; }

  static bool isDdl(const tsql::Translation& translation);
  static std::size_t writesOf(const tsql::Translation& translation);
  // A statement that is right in itself and was not run, as the front end would say it.
  static DatabaseError refused(std::string text);

 private:
  TranslationPtr knownOrNew(Asked& asked);
  TranslationPtr translate(const Asked& asked);
  // Reads the guard's list again when it is older than `life` and the database has changed. Whether
  // it did: other statements have run then.
  bool refreshListed(std::chrono::milliseconds life);

  const tsql::Dialect dialect_;
  const std::chrono::milliseconds commandTimeout_;  // of a new loan
  Deadline& deadline_;
  TranslationCache& translations_;
  Guard guard_;
  tsql::Shape spareShape_;  // of the last statement, for its capacity alone
  bool allowDdl_ = false;
  ListStamp listedAt_;
  // For so long a listed table is taken for listed. Every save of anybody changes the database, and
  // would have the whole list read anew.
  static constexpr std::chrono::milliseconds kListedLife{1'000};
  std::chrono::steady_clock::time_point listedTime_;  // when it was looked at
  std::string identityInsert_;  // folded name of the table it is on for, or ""
};

}  // namespace tarlo::database
