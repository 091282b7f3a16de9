// How a PostgreSQL connection sends the steps of a translation.

#include <algorithm>

#include "database/postgresql/connection.h"
#include "database/postgresql/errors.h"
#include "database/postgresql/procedure_call.h"
#include "database/postgresql/values.h"
#include "database/stored_recordset.h"
#include "tsql/error.h"

namespace tarlo::database {
namespace {

// Key of the identity step among the prepared statements of a translation.
constexpr std::size_t kIdentityKey = 1u << 20;

std::vector<Variant> keysOf(const PGresult* result) {
  std::vector<Variant> keys;
  for (int row = 0; row < PQntuples(result); ++row) {
    keys.push_back(readField(result, row, 0, tsql::kIntType));
  }
  return keys;
}

}  // namespace

void PostgresqlConnection::command(const std::string& text, Part part) {
  session_->query(text);
  sent_.push_back({part});
}

void PostgresqlConnection::sync() {
  session_->sync();
  sent_.push_back({Part::Sync});
}

void PostgresqlConnection::startExchange(bool writes) {
  if (inTransaction_) return command("SAVEPOINT tarlo");
  sendForgotten();
  // Who may write and only reads now is left as it is.
  const bool isReading = onlyReads() || (isReading_ && !writes);
  if (settings_.readOnly || isReading == isReading_) return;
  command(isReading ? "SET default_transaction_read_only=on"
                    : "SET default_transaction_read_only=off");
  // It holds for the transactions that begin after it.
  sync();
  isReading_ = isReading;
}

void PostgresqlConnection::endExchange() {
  if (inTransaction_) command("RELEASE SAVEPOINT tarlo");
  sync();
}

void PostgresqlConnection::sendForgotten() {
  for (const std::string& name : prepared_.takeForgotten()) {
    command("DEALLOCATE " + name);
  }
}

void PostgresqlConnection::sendCheck(const CachedTranslation& translation) {
  if (translation.schemaOf.empty()) return;
  const std::string sum = std::to_string(translation.schemaVersion);
  const char* const values[] = {translation.schemaOf.c_str(), sum.c_str()};
  session_->run(PostgresqlCatalogue::kCheck, values);
  sent_.push_back({Part::Check});
}

void PostgresqlConnection::sendStep(const TranslationPtr& translation, const Ready& ready,
                                    bool isLast) {
  const tsql::Step& step = *ready.step;
  const bool isRows = step.role == tsql::StepRole::Rows;
  const Sent sent{isRows ? Part::Rows : Part::Write, isLast};
  if (step.role == tsql::StepRole::Ddl) {
    session_->query(step.text);
    sent_.push_back(sent);
    return;
  }
  const PreparedStatements::Key key{translation.get(), ready.key, ready.bound.isWide};
  const std::string* kept = prepared_.find(key);
  const auto isComing = [&](const Sent& each) {
    return each.part == Part::Prepare && each.key == key;
  };
  const auto coming = std::find_if(sent_.begin(), sent_.end(), isComing);
  if (coming != sent_.end()) kept = &coming->name;
  std::string name = kept == nullptr ? prepared_.newName() : *kept;
  if (kept == nullptr) {
    session_->prepare(name, step.text, ready.bound.types);
    sent_.push_back({Part::Prepare, false, key, translation, name});
  }
  session_->run(name, ready.bound.values());
  sent_.push_back(sent);
}

std::vector<PostgresqlConnection::Ready> PostgresqlConnection::bindSteps(
    const tsql::Translation& made, const Asked& asked, bool identity) {
  std::vector<Ready> steps;
  try {
    for (std::size_t i = 0; i < made.steps.size(); ++i) {
      const bool isIdentity = identity && i + 1 == made.steps.size();
      const tsql::Step& step = isIdentity ? made.identityStep : made.steps[i];
      steps.push_back({&step, isIdentity ? kIdentityKey : i, bindLiterals(step, asked.shape)});
    }
  } catch (const tsql::StatementError& error) {
    refuseLiteral(asked, error);
  }
  return steps;
}

TranslatingConnection::Outcome PostgresqlConnection::runSteps(const TranslationPtr& translation,
                                                              const Asked& asked, Want want,
                                                              std::unique_ptr<Recordset>& rows) {
  const tsql::Translation& made = translation->translation;
  applyIdentityInsert(made);
  if (want == Want::Rows) rows = std::make_unique<StoredRecordset>();
  if (made.steps.empty()) return Outcome::Done;
  const std::size_t writes = writesOf(made);
  const bool identity = want == Want::Rows && made.steps.back().role != tsql::StepRole::Rows &&
                        !made.identityStep.text.empty();
  const std::vector<Ready> steps = bindSteps(made, asked, identity);
  ready();
  const Unwatched unwatched(*this, writes > 0);
  startExchange(writes > 0);
  isUnsure_ = writes > 0 && !inTransaction_;
  if (writes == 0) sendCheck(*translation);
  for (const Ready& step : steps) sendStep(translation, step, &step == &steps.back());
  // A write holds its tables until the end of the transaction, so that a look behind it is exact.
  if (writes > 0 && !isDdl(made)) sendCheck(*translation);
  endExchange();
  // A procedure of the host runs between the step and its rows, and may want the connection.
  return answered(receive(writes == 0 && made.procedure.empty()), translation, identity, want,
                  rows);
}

TranslatingConnection::Outcome PostgresqlConnection::answered(Answer answer,
                                                              const TranslationPtr& translation,
                                                              bool identity, Want want,
                                                              std::unique_ptr<Recordset>& rows) {
  const tsql::Translation& made = translation->translation;
  if (answer.error) {
    server_.note(*answer.error);
    if (!haveChanged(translation, answer)) throw DatabaseError(*answer.error);
    stale_ = translation;
    catalogue_.forget();
    return Outcome::SchemaChanged;
  }
  const std::size_t writes = writesOf(made);
  server_.noteAnswer(writes > 0);
  if (isDdl(made)) {
    catalogue_.forget();
    ddlPending_ = inTransaction_;
  }
  if (answer.isOpen) openTranslation_ = translation;
  if (!made.procedure.empty()) {
    const Variant value = callProcedure(procedures_, made, answer.rows.get());
    if (want == Want::Rows && !made.columns.empty()) {
      rows = std::make_unique<StoredRecordset>(made.columns[0].title, std::vector{value});
    }
    return Outcome::Done;
  }
  if (want == Want::Nothing) {
    if (answer.isOpen) leave();
    return Outcome::Done;
  }
  if (identity) {
    rows = std::make_unique<StoredRecordset>(made.identityColumn, keysOf(answer.rows.get()));
  } else if (made.steps.back().role == tsql::StepRole::Rows) {
    auto opened = std::make_unique<PostgresqlRecordset>(*this, translation, std::move(answer.rows),
                                                        answer.isOpen);
    if (answer.isOpen) open_ = opened.get();
    rows = std::move(opened);
  }
  return Outcome::Done;
}

bool PostgresqlConnection::haveChanged(const TranslationPtr& translation, const Answer& answer) {
  if (answer.failed == Part::Check) return answer.error->native().sqlState == "22012";
  const std::string& state = answer.error->native().sqlState;
  const bool cannotBe = state == "57014" || session_->isLost() || isDdl(translation->translation) ||
                        translation->schemaOf.empty();
  if (cannotBe) return false;
  catalogue_.forget();
  for (const tsql::Touched& touched : translation->translation.touched) {
    if (touched.access != tsql::Access::Execute) catalogue_.findTable(touched.name);
  }
  const PostgresqlCatalogue::Stamp now = catalogue_.stampOf(translation->translation.touched);
  return now.tables != translation->schemaOf || now.sum != translation->schemaVersion;
}

}  // namespace tarlo::database
