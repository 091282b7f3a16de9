// How a SQLite connection runs the steps of a translation.

#include <fmt/format.h>

#include "database/sqlite/connection.h"
#include "text/fold.h"

namespace tarlo::database {
namespace {

// Key of the identity step among the prepared statements of a translation.
constexpr std::size_t kIdentityKey = 1u << 20;

bool isDdl(const tsql::Translation& translation) {
  return std::any_of(translation.steps.begin(), translation.steps.end(),
                     [](const tsql::Step& step) { return step.role == tsql::StepRole::Ddl; });
}

std::size_t writesOf(const tsql::Translation& translation) {
  const auto writes =
      std::count_if(translation.steps.begin(), translation.steps.end(),
                    [](const tsql::Step& step) { return step.role != tsql::StepRole::Rows; });
  return static_cast<std::size_t>(writes);
}

DatabaseError refused(std::string text) {
  std::string description = text;
  return DatabaseError(kStatementFailed, std::move(description),
                       {.engine = "tsql", .code = 0, .sqlState = "42000", .text = std::move(text)});
}

bool isSchemaTrouble(int code) {
  return (code & 0xFF) == SQLITE_ERROR || (code & 0xFF) == SQLITE_SCHEMA;
}

}  // namespace

// Several writes as one. Inside an open transaction they are a part of it that can be undone alone.
class SqliteConnection::WriteScope {
 public:
  WriteScope(SqliteConnection& connection, bool wanted) : connection_(connection) {
    if (!wanted) return;
    inner_ = !sqlite3_get_autocommit(connection.handle_.get());
    connection_.execSimple(inner_ ? "SAVEPOINT tarlo" : "BEGIN IMMEDIATE");
    open_ = true;
  }
  ~WriteScope() {
    // Some failures roll back by themselves.
    sqlite3* handle = connection_.handle_.get();
    if (!open_ || sqlite3_get_autocommit(handle)) return;
    const char* undo = inner_ ? "ROLLBACK TO tarlo; RELEASE tarlo" : "ROLLBACK";
    sqlite3_exec(handle, undo, nullptr, nullptr, nullptr);
  }
  WriteScope(const WriteScope&) = delete;
  WriteScope& operator=(const WriteScope&) = delete;

  void finish() {
    if (!open_) return;
    connection_.execSimple(inner_ ? "RELEASE tarlo" : "COMMIT");
    open_ = false;
  }

 private:
  SqliteConnection& connection_;
  bool inner_ = false;
  bool open_ = false;
};

// A write goes on when its client has left: what was asked for is done, or not at all.
class SqliteConnection::Unwatched {
 public:
  Unwatched(SqliteConnection& connection, bool wanted) : connection_(connection), wanted_(wanted) {
    if (wanted) connection.deadline_.watch(nullptr);
  }
  ~Unwatched() {
    if (wanted_) connection_.setContext(connection_.guard_.context());
  }
  Unwatched(const Unwatched&) = delete;
  Unwatched& operator=(const Unwatched&) = delete;

 private:
  SqliteConnection& connection_;
  bool wanted_;
};

std::unique_ptr<Recordset> SqliteConnection::run(std::string_view sql, Want want) {
  constexpr int kAttempts = 5;
  constexpr std::size_t kKeptShapeBytes = 64u << 10;
  beginCall();
  refreshListed(kListedLife);
  Asked asked{sql, std::move(spareShape_)};
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const TranslationPtr translation = translationOf(asked);
    std::unique_ptr<Recordset> rows;
    if (runSteps(translation, asked, want, rows) == Outcome::SchemaChanged) continue;
    if (asked.shape.key.capacity() <= kKeptShapeBytes) spareShape_ = std::move(asked.shape);
    return rows;
  }
  throw refused("The tables are being changed all the time; the statement was not run.");
}

void SqliteConnection::applyIdentityInsert(const tsql::Translation& translation) {
  if (!translation.identityInsertTable.empty()) {
    std::string table = text::foldedName(translation.identityInsertTable);
    const bool isOn = identityInsert_ == table;
    if (translation.identityInsertOn && !isOn && !identityInsert_.empty()) {
      throw refused(
          fmt::format("IDENTITY_INSERT is on for table {} already; it can be on for one table "
                      "at a time.",
                      identityInsert_));
    }
    if (translation.identityInsertOn) identityInsert_ = std::move(table);
    if (!translation.identityInsertOn && isOn) identityInsert_.clear();
  }
  const std::string& explicitly = translation.explicitIdentityOf;
  if (!explicitly.empty() && text::foldedName(explicitly) != identityInsert_) {
    throw refused(
        fmt::format("A value for the identity column of table {} may be given only while "
                    "IDENTITY_INSERT is on for it.",
                    explicitly));
  }
}

SqliteConnection::Outcome SqliteConnection::runSteps(const TranslationPtr& translation,
                                                     const Asked& asked, Want want,
                                                     std::unique_ptr<Recordset>& rows) {
  const tsql::Translation& made = translation->translation;
  applyIdentityInsert(made);
  const std::size_t writes = writesOf(made);
  const bool ddl = isDdl(made);
  // A write is not tried first: under another schema it might succeed with another meaning.
  if (writes > 0 && !ddl && schemaChanged(*translation)) return Outcome::SchemaChanged;
  if (want == Want::Rows) rows = std::make_unique<StoredRecordset>();
  if (writes > 0) use_.file().check();
  const Unwatched unwatched(*this, writes > 0);
  WriteScope scope(*this, writes > 1);
  std::size_t writesLeft = writes;
  for (std::size_t i = 0; i < made.steps.size(); ++i) {
    const Outcome outcome = runStep(translation, i, asked, want, rows);
    if (outcome == Outcome::SchemaChanged) {
      if (writes == 0 || writesLeft > 0) return outcome;
      // What was written stays written, so it cannot start over.
      throw refused("The tables were changed by another user; the new key could not be read.");
    }
    if (made.steps[i].role != tsql::StepRole::Rows && --writesLeft == 0) scope.finish();
  }
  if (ddl) schemaTouched();
  if (writes > 0) checkWritten();
  return Outcome::Done;
}

SqliteConnection::Outcome SqliteConnection::runStep(const TranslationPtr& translation,
                                                    std::size_t index, const Asked& asked,
                                                    Want want, std::unique_ptr<Recordset>& rows) {
  const tsql::Translation& made = translation->translation;
  const bool wanted = want == Want::Rows && index + 1 == made.steps.size();
  const bool isRows = made.steps[index].role == tsql::StepRole::Rows;
  const bool identity = wanted && !isRows && !made.identityStep.text.empty();
  const tsql::Step& step = identity ? made.identityStep : made.steps[index];
  StatementCache::Use use = prepare(translation, identity ? kIdentityKey : index, step);
  if (!use) return Outcome::SchemaChanged;
  guard_.checkEngine(use.footprint(), asked.sql);
  bind(use, step, asked, wanted && isRows ? TextLife::Call : TextLife::WholeRun);
  if (isRows) {
    int code = SQLITE_OK;
    const Outcome outcome = runRows(use, code);
    if (outcome == Outcome::Done && wanted) {
      rows = std::make_unique<SqliteRecordset>(*this, std::move(use), code == SQLITE_ROW);
    }
    return outcome;
  }
  std::vector<Variant> returned;
  runWrite(use, returned);
  if (identity) {
    rows = std::make_unique<StoredRecordset>(made.identityColumn, std::move(returned));
  }
  return Outcome::Done;
}

StatementCache::Use SqliteConnection::prepare(const TranslationPtr& translation, std::size_t key,
                                              const tsql::Step& step) {
  StatementCache::Use kept = statements_.find(*translation, key);
  if (kept) return kept;
  int code = SQLITE_OK;
  StatementCache::Use fresh = statements_.prepare(translation, key, step.text, authorizer_, code);
  std::optional<DatabaseError> error;
  if (code != SQLITE_OK) error = failure(code, SqliteCall::Prepare);
  // SQLite may have read a newer schema for it; then a later step would not tell. The steps of one
  // DDL statement change the schema themselves.
  const bool telling = code == SQLITE_OK || isSchemaTrouble(code);
  if (telling && !isDdl(translation->translation) && schemaChanged(*translation)) return {};
  if (error) throw *error;
  return fresh;
}

void SqliteConnection::bind(const StatementCache::Use& use, const tsql::Step& step,
                            const Asked& asked, TextLife life) {
  try {
    const int code = bindLiterals(use.get(), step, asked.shape, life);
    if (code != SQLITE_OK) fail(code, SqliteCall::Run);
  } catch (const tsql::StatementError& error) {
    // Only a translation from the text knows where the literal stands.
    try {
      tsql::translate(asked.sql, catalogue_, translateOptions());
    } catch (const tsql::StatementError& placed) {
      throw refusedStatement(placed);
    }
    throw refusedStatement(error);
  }
}

// SQLite compiles a statement anew at its first step when the schema has changed.
int SqliteConnection::firstStep(const StatementCache::Use& use) {
  const Authorizer::Watch watch(authorizer_);
  const Deadline::Running running(deadline_);
  return sqlite3_step(use.get());
}

SqliteConnection::Outcome SqliteConnection::runRows(StatementCache::Use& use, int& code) {
  code = firstStep(use);
  const bool ok = code == SQLITE_ROW || code == SQLITE_DONE;
  std::optional<DatabaseError> error;
  if (!ok) error = failure(code, SqliteCall::Run);
  // SQLite prepares a statement anew by itself when the schema has changed; then the front end must
  // look again as well.
  const bool renewed = sqlite3_stmt_status(use.get(), SQLITE_STMTSTATUS_REPREPARE, 1) != 0;
  if ((renewed || (!ok && isSchemaTrouble(code))) && schemaChanged(*use.translation())) {
    return Outcome::SchemaChanged;
  }
  if (error) throw *error;
  return Outcome::Done;
}

void SqliteConnection::runWrite(const StatementCache::Use& use, std::vector<Variant>& returned) {
  int code = firstStep(use);
  const Deadline::Running running(deadline_);
  for (; code == SQLITE_ROW; code = sqlite3_step(use.get())) {
    const std::int64_t key = sqlite3_column_int64(use.get(), 0);
    const auto small = static_cast<std::int32_t>(key);
    returned.push_back(small == key ? Variant(small) : Variant(key));
  }
  if (code != SQLITE_DONE) fail(code, SqliteCall::Run);
}

}  // namespace tarlo::database
