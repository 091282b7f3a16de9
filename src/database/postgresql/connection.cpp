#include "database/postgresql/connection.h"

#include <algorithm>
#include <array>

#include "database/postgresql/errors.h"
#include "tsql/error.h"
#include "variant/error_state.h"

namespace tarlo::database {
namespace {

// The name that stands at a place of a statement, without its table and its brackets.
std::string_view nameAt(std::string_view sql, std::size_t offset) {
  if (offset >= sql.size()) return {};
  std::string_view rest = sql.substr(offset);
  std::string_view name;
  for (;;) {
    const bool isQuoted = rest.starts_with('[') || rest.starts_with('"');
    if (isQuoted) rest.remove_prefix(1);
    name = rest.substr(0, rest.find_first_of(isQuoted ? "]\"" : " \t\r\n,;()=<>!+-*/%.&|^~'"));
    rest.remove_prefix(std::min(rest.size(), name.size() + (isQuoted ? 1 : 0)));
    if (!rest.starts_with('.')) return name;
    rest.remove_prefix(1);
  }
}

}  // namespace

PostgresqlConnection::PostgresqlConnection(Connect connect, ServerState& server,
                                           TranslationCache& translations,
                                           const ProcedureTable& procedures, Settings settings)
    : TranslatingConnection(tsql::Dialect::Postgresql, deadline_, settings.commandTimeout,
                            translations),
      connect_(std::move(connect)),
      server_(server),
      procedures_(procedures),
      settings_(settings),
      deadline_(settings.commandTimeout),
      catalogue_(procedures, [this](const char* question, std::span<const char* const> values) {
        return ask(question, values);
      }) {
  this->connect();
}

PostgresqlConnection::~PostgresqlConnection() {
  if (open_ != nullptr) open_->detach();
}

void PostgresqlConnection::connect() {
  using Catalogue = PostgresqlCatalogue;
  const std::array<std::pair<const char*, const char*>, 4> own = {
      {{Catalogue::kNames, Catalogue::kNamesText},
       {Catalogue::kColumns, Catalogue::kColumnsText},
       {Catalogue::kSum, Catalogue::kSumText},
       {Catalogue::kCheck, Catalogue::kCheckText}}};
  if (session_) session_->hangUp();
  session_ = std::make_unique<PostgresqlSession>(connect_(), deadline_);
  prepared_ = {};
  catalogue_.forget();
  sent_.clear();
  isReading_ = false;
  for (const auto& [name, text] : own) {
    session_->prepare(name, text, {});
    sent_.push_back({Part::Setting});
  }
  sync();
  if (Answer answer = receive(false); answer.error) throw DatabaseError(*answer.error);
}

void PostgresqlConnection::ready() {
  if (open_ != nullptr) open_->spool();
  if (!inTransaction_ && session_->isDead()) connect();
}

bool PostgresqlConnection::onlyReads() const {
  const StatementContext* context = guard().context();
  return context != nullptr && context->rights.writes.empty() && context->rights.deletes.empty() &&
         !context->rights.executes;
}

tsql::Translation PostgresqlConnection::translateNow(std::string_view sql) {
  for (bool isFirst = true;; isFirst = false) {
    try {
      return tsql::translate(sql, catalogue_, translateOptions());
    } catch (const tsql::StatementError& error) {
      // It may be right for the tables as they are now.
      if (isFirst && catalogue_.refresh()) continue;
      const std::string why = catalogue_.whyLeftOut(nameAt(sql, error.position().offset));
      if (error.refusal() != tsql::Refusal::Name || why.empty()) throw;
      throw tsql::StatementError(error.refusal(), error.position(), why);
    }
  }
}

void PostgresqlConnection::stamp(CachedTranslation& made) {
  PostgresqlCatalogue::Stamp stamp = catalogue_.stampOf(made.translation.touched);
  made.schemaVersion = stamp.sum;
  made.schemaOf = std::move(stamp.tables);
}

PostgresqlResult PostgresqlConnection::ask(const char* question,
                                           std::span<const char* const> values) {
  ready();
  startExchange(false);
  session_->run(question, values);
  sent_.push_back({Part::Rows, true});
  endExchange();
  Answer answer = receive(false);
  if (answer.error) throw DatabaseError(*answer.error);
  return std::move(answer.rows);
}

void PostgresqlConnection::transact(const char* text, Part part) {
  command(text, part);
  sync();
  isUnsure_ = part == Part::Commit;
  const Answer answer = receive(false);
  if (answer.error) throw DatabaseError(*answer.error);
}

void PostgresqlConnection::begin() {
  beginCall();
  ready();
  transact(settings_.readOnly ? "BEGIN" : onlyReads() ? "BEGIN READ ONLY" : "BEGIN READ WRITE");
  inTransaction_ = true;
}

void PostgresqlConnection::commit() {
  beginCall();
  ready();
  const Unwatched unwatched(*this, true);
  transact("COMMIT", Part::Commit);
  inTransaction_ = false;
  ddlPending_ = false;
}

void PostgresqlConnection::rollback() noexcept {
  if (!inTransaction_) return;
  leave();
  beginCall();
  ErrorState err;
  if (!session_->isLost()) err.run([&] { transact("ROLLBACK"); });
  if (err.failed()) session_->lose();
  inTransaction_ = false;
  if (ddlPending_) catalogue_.forget();
  ddlPending_ = false;
}

void PostgresqlConnection::reset() noexcept {
  leave();
  TranslatingConnection::reset();
  if (session_->isInTransaction()) session_->lose();
}

}  // namespace tarlo::database
