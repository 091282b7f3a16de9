// How a SQLite connection runs the steps of a translation.

#include <optional>

#include "database/sqlite/connection.h"
#include "database/stored_recordset.h"

namespace tarlo::database {
namespace {

// Key of the identity step among the prepared statements of a translation.
constexpr std::size_t kIdentityKey = 1u << 20;

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

TranslatingConnection::Outcome SqliteConnection::runSteps(const TranslationPtr& translation,
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

TranslatingConnection::Outcome SqliteConnection::runStep(const TranslationPtr& translation,
                                                         std::size_t index, const Asked& asked,
                                                         Want want,
                                                         std::unique_ptr<Recordset>& rows) {
  const tsql::Translation& made = translation->translation;
  const bool wanted = want == Want::Rows && index + 1 == made.steps.size();
  const bool isRows = made.steps[index].role == tsql::StepRole::Rows;
  const bool identity = wanted && !isRows && !made.identityStep.text.empty();
  const tsql::Step& step = identity ? made.identityStep : made.steps[index];
  StatementCache::Use use = prepare(translation, identity ? kIdentityKey : index, step);
  if (!use) return Outcome::SchemaChanged;
  guard().checkEngine(use.footprint(), asked.sql);
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
    refuseLiteral(asked, error);
  }
}

// SQLite compiles a statement anew at its first step when the schema has changed.
int SqliteConnection::firstStep(const StatementCache::Use& use) {
  const Authorizer::Watch watch(authorizer_);
  const SqliteDeadline::Running running(deadline_);
  return sqlite3_step(use.get());
}

TranslatingConnection::Outcome SqliteConnection::runRows(StatementCache::Use& use, int& code) {
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
  const SqliteDeadline::Running running(deadline_);
  for (; code == SQLITE_ROW; code = sqlite3_step(use.get())) {
    const std::int64_t key = sqlite3_column_int64(use.get(), 0);
    const auto small = static_cast<std::int32_t>(key);
    returned.push_back(small == key ? Variant(small) : Variant(key));
  }
  if (code != SQLITE_DONE) fail(code, SqliteCall::Run);
}

}  // namespace tarlo::database
