// How a PostgreSQL connection reads what its server answers.

#include <utility>

#include "database/postgresql/connection.h"
#include "database/postgresql/errors.h"
#include "variant/error_state.h"

namespace tarlo::database {
namespace {

// What a server says when it ends a session before the transaction has come to its end. A server
// that has broken down says so to sessions that may just have saved.
bool endsBeforeCommit(std::string_view sqlState) {
  return sqlState == "57P01" || sqlState == "57P04" || sqlState == "57P05";
}

DatabaseError rolledBack() {
  const char* text = "The transaction had failed; nothing was saved.";
  return DatabaseError(kStatementFailed, text,
                       {.engine = "postgresql", .code = 0, .sqlState = "40000", .text = text});
}

}  // namespace

DatabaseError PostgresqlConnection::failureOf(const PGresult* result) {
  DatabaseError error = postgresqlError(result);
  DatabaseError::Native native = error.native();
  if (native.sqlState == "57014") {
    if (session_->wasEnded() && deadline_.wasCancelled()) {
      return DatabaseError(kCancelled, "The client has gone; its statement was ended.", native);
    }
    native.sqlState = "HYT00";
    return DatabaseError(kTimeout, error.description(), std::move(native));
  }
  if (native.sqlState == "25006" && !settings_.readOnly && onlyReads()) {
    native.outage = Outage::None;
    return DatabaseError(kForbidden, "The statement writes, which is not allowed here.", native);
  }
  return error;
}

void PostgresqlConnection::takeResult(PostgresqlResult result, const Sent& sent, Answer& answer) {
  switch (PQresultStatus(result.get())) {
    case PGRES_TUPLES_OK:
      if (sent.isLast) answer.rows = std::move(result);
      return;
    case PGRES_COMMAND_OK:
      if (sent.part == Part::Prepare) prepared_.keep(sent.key, sent.translation, sent.name);
      if (sent.part == Part::Commit && PQcmdStatus(result.get()) == std::string_view("ROLLBACK")) {
        answer.error = rolledBack();
      }
      return;
    case PGRES_PIPELINE_SYNC:
    case PGRES_PIPELINE_ABORTED:
      return;
    default:
      break;
  }
  if (answer.error) return;
  answer.error = failureOf(result.get());
  answer.failed = sent.part;
  if (losesConnection(sqlStateOf(result.get()))) hungUp(sent, answer);
}

// Its last words were an error; nothing else comes.
void PostgresqlConnection::hungUp(const Sent& sent, Answer& answer) {
  session_->lose();
  const DatabaseError::Native& native = answer.error->native();
  const bool isBefore = sent.part != Part::Sync && sent.part != Part::Commit;
  if (isUnsure_ && !(isBefore && endsBeforeCommit(native.sqlState))) {
    answer.error = unknownOutcome(native.text);
  }
}

// False when it stops at a row, with the part at the front.
bool PostgresqlConnection::readPart(const Sent& sent, bool streams, Answer& answer) {
  const bool isStream = streams && sent.isLast && sent.part == Part::Rows && !answer.error;
  if (isStream) session_->oneByOne();
  for (;;) {
    PostgresqlResult result = session_->next();
    if (!result && sent.part != Part::Sync) return true;
    if (!result) continue;
    const ExecStatusType status = PQresultStatus(result.get());
    if (status == PGRES_SINGLE_TUPLE) {
      answer.rows = std::move(result);
      answer.isOpen = true;
      return false;
    }
    takeResult(std::move(result), sent, answer);
    if (session_->isLost() || status == PGRES_PIPELINE_SYNC) return true;
  }
}

void PostgresqlConnection::readParts(bool streams, Until until, Answer& answer) {
  while (!sent_.empty() && !session_->isLost()) {
    if (!readPart(sent_.front(), streams, answer)) return;
    const bool isSync = sent_.front().part == Part::Sync;
    sent_.pop_front();
    if (isSync && until == Until::Sync && !sent_.empty()) return;
  }
  sent_.clear();
  if (!session_->isLost()) session_->settle();
}

PostgresqlConnection::Answer PostgresqlConnection::receive(bool streams, Until until) {
  Answer answer;
  try {
    readParts(streams, until, answer);
  } catch (const DatabaseError& error) {
    sent_.clear();
    const DatabaseError told = isUnsure_ ? unknownOutcome(error.native().text) : error;
    isUnsure_ = false;
    server_.note(told);
    throw DatabaseError(told);
  }
  if (answer.isOpen) return answer;
  isUnsure_ = false;
  if (inTransaction_ && !session_->isLost() && session_->isTransactionFailed()) undoFailed();
  return answer;
}

void PostgresqlConnection::undoFailed() {
  command("ROLLBACK TO SAVEPOINT tarlo");
  command("RELEASE SAVEPOINT tarlo");
  sync();
  Answer answer;
  readParts(false, Until::All, answer);
  // A transaction that cannot go on must not seem to.
  if (answer.error) session_->lose();
}

std::optional<DatabaseError> PostgresqlConnection::tryNextRow(PostgresqlResult& row) {
  std::optional<DatabaseError> error;
  Answer answer;
  try {
    answer = receive(true);
    error = std::move(answer.error);
  } catch (const DatabaseError& lost) {
    error = lost;
  }
  if (answer.isOpen) {
    row = std::move(answer.rows);
    return {};
  }
  std::exchange(open_, nullptr)->detach();
  const TranslationPtr translation = std::exchange(openTranslation_, nullptr);
  if (!error) return {};
  error->setStatement(translation->translation.steps.back().text);
  tell(*error);
  return error;
}

PostgresqlResult PostgresqlConnection::nextRow() {
  PostgresqlResult row;
  if (const auto error = tryNextRow(row)) throw DatabaseError(*error);
  return row;
}

void PostgresqlConnection::drain() {
  constexpr std::size_t kFew = 1000;
  constexpr std::chrono::milliseconds kSoon{2};
  Answer answer;
  for (std::size_t rows = 0; !sent_.empty(); ++rows) {
    // A few rows that are here already cost less than a request to cancel.
    if (rows >= kFew || !session_->hasResult(kSoon)) session_->cancel();
    answer = receive(true);
  }
}

void PostgresqlConnection::leave() noexcept {
  if (open_ != nullptr) std::exchange(open_, nullptr)->detach();
  if (!std::exchange(openTranslation_, nullptr)) return;
  beginCall();
  ErrorState err;
  if (!session_->isLost()) err.run([this] { drain(); });
  if (err.failed()) session_->lose();
}

}  // namespace tarlo::database
