#pragma once
// A connection to a PostgreSQL server. The commands of a call (settings, what is to be prepared,
// the look whether the tables are as they were, the steps) go out together and cost one round trip;
// they are one transaction unless one is open. Inside an open transaction each call has a
// savepoint, so that a statement that fails leaves the others standing, as on every engine.
//
// Statements of a borrower who only reads run in read-only transactions. The session's default is
// set, not the transaction: it goes out with the first statement that needs it otherwise than the
// last one, so that the same borrower pays once and nobody a round trip.

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/postgresql/bind.h"
#include "database/postgresql/catalogue.h"
#include "database/postgresql/recordset.h"
#include "database/postgresql/server_state.h"
#include "database/postgresql/session.h"
#include "database/postgresql/statement_cache.h"
#include "database/translating_connection.h"

namespace tarlo::database {

class PostgresqlConnection final : public TranslatingConnection {
 public:
  // Makes a connection to the server. Throws DatabaseError.
  using Connect = std::function<PostgresqlHandle()>;
  struct Settings {
    std::chrono::milliseconds commandTimeout{30'000};
    bool readOnly = false;  // the session was opened so
  };
  // The owner of the state, the caches and the procedures outlives the connection.
  PostgresqlConnection(Connect connect, ServerState& server, TranslationCache& translations,
                       const ProcedureTable& procedures, Settings settings);
  ~PostgresqlConnection() override;

  bool isLost() const override { return session_->isLost(); }
  void reset() noexcept override;
  std::vector<std::unique_ptr<Recordset>> openAll(
      std::span<const std::string_view> statements) override;

  // For the recordset whose rows are coming: the next one, nothing at the end. Throws
  // DatabaseError, after which nothing comes.
  PostgresqlResult nextRow();
  std::optional<DatabaseError> tryNextRow(PostgresqlResult& row);
  // It wants no more rows. What is still to come is read or cancelled.
  void leave() noexcept;

 protected:
  void begin() override;
  void commit() override;
  void rollback() noexcept override;

  tsql::Catalogue& tables() override { return catalogue_; }
  bool refreshTables() override { return catalogue_.refresh(); }
  bool isCurrent(const CachedTranslation& translation) override {
    return &translation != stale_.get();
  }
  tsql::Translation translateNow(std::string_view sql) override;
  void stamp(CachedTranslation& made) override;
  // The server has no number that tells whether something was written, so the list is read again.
  ListStamp listStamp() override { return {++listReadings_, 0}; }
  bool isDdlPending() const override { return ddlPending_; }
  Outcome runSteps(const TranslationPtr& translation, const Asked& asked, Want want,
                   std::unique_ptr<Recordset>& rows) override;

 private:
  // What was sent, in order; each is answered.
  enum class Part : std::uint8_t { Setting, Commit, Prepare, Check, Write, Rows, Sync };
  struct Sent {
    Part part;
    bool isLast = false;  // the step whose rows are wanted
    // Of a Prepare: what it is for.
    PreparedStatements::Key key = {};
    TranslationPtr translation = {};
    std::string name = {};
  };
  struct Answer {
    PostgresqlResult rows;  // of the last step
    bool isOpen = false;    // further rows come
    std::optional<DatabaseError> error;
    Part failed = Part::Sync;
  };
  // How much is read: everything, or up to the next sync.
  enum class Until : std::uint8_t { All, Sync };
  // A step on its way: its text and what is bound.
  struct Ready {
    const tsql::Step* step;
    std::size_t key;
    BoundParameters bound;
  };

  // Before anything is sent: nothing is under way, and the server is there.
  void ready();
  void connect();
  void startExchange(bool writes);
  void sendCheck(const CachedTranslation& translation);
  void sendStep(const TranslationPtr& translation, const Ready& ready, bool isLast);
  void sendForgotten();
  void command(const std::string& text, Part part = Part::Setting);
  void sync();
  void endExchange();
  // Reads all answers; with `streams` up to the next row of the last step. Throws DatabaseError
  // when the connection breaks.
  Answer receive(bool streams, Until until = Until::All);
  void readParts(bool streams, Until until, Answer& answer);
  bool readPart(const Sent& sent, bool streams, Answer& answer);
  void takeResult(PostgresqlResult result, const Sent& sent, Answer& answer);
  void hungUp(const Sent& sent, Answer& answer);
  DatabaseError failureOf(const PGresult* result);
  void undoFailed();
  void drain();

  // A statement of a batch that is sent together with others.
  struct Together {
    std::size_t index;
    TranslationPtr translation;
    std::vector<Ready> steps;
  };
  std::vector<Together> translateTogether(std::span<const std::string_view> statements);
  std::vector<Ready> bindSteps(const tsql::Translation& made, const Asked& asked, bool identity);
  Outcome answered(Answer answer, const TranslationPtr& translation, bool identity, Want want,
                   std::unique_ptr<Recordset>& rows);
  bool haveChanged(const TranslationPtr& translation, const Answer& answer);
  PostgresqlResult ask(const char* question, std::span<const char* const> values);
  void transact(const char* text, Part part = Part::Setting);
  bool onlyReads() const;

  Connect connect_;
  ServerState& server_;
  const ProcedureTable& procedures_;
  Settings settings_;
  Deadline deadline_;
  std::unique_ptr<PostgresqlSession> session_;
  PreparedStatements prepared_;
  PostgresqlCatalogue catalogue_;
  TranslationPtr stale_;  // the tables were found to be others than it was made for

  std::deque<Sent> sent_;
  bool isUnsure_ = false;  // what was sent is saved when it is answered, or perhaps before
  PostgresqlRecordset* open_ = nullptr;  // its rows are coming
  TranslationPtr openTranslation_;
  bool inTransaction_ = false;
  bool ddlPending_ = false;
  bool isReading_ = false;  // the session's transactions are read-only now
  std::int64_t listReadings_ = 0;
};

}  // namespace tarlo::database
