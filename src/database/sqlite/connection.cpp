#include "database/sqlite/connection.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "text/fold.h"

namespace tarlo::database {

SqliteConnection::SqliteConnection(SqliteHandle handle, DatabaseFile& file,
                                   TranslationCache& translations, const ProcedureTable& procedures,
                                   Settings settings)
    : handle_(std::move(handle)),
      use_(file),
      translations_(translations),
      settings_(settings),
      deadline_(settings.commandTimeout, settings.busyTimeout),
      catalogue_(handle_.get(), procedures),
      dataVersion_(prepareSqlite(handle_.get(), "PRAGMA data_version")),
      statements_(handle_.get()) {
  deadline_.install(handle_.get());
  authorizer_.install(handle_.get());
}

namespace {

// Gives a failing call's error the statement that it was for, and tells whoever wants to know.
template <class Call, class Tell>
auto withStatement(std::string_view sql, Call&& call, Tell&& tell) {
  try {
    return call();
  } catch (DatabaseError& error) {
    error.setStatement(sql);
    tell(error);
    throw;
  }
}

}  // namespace

void SqliteConnection::tell(const DatabaseError& error) const noexcept {
  if (guard_.context() != nullptr) guard_.context()->tell(error);
}

void SqliteConnection::execute(std::string_view sql) {
  withStatement(
      sql, [&] { run(sql, Want::Nothing); }, [this](const auto& error) { tell(error); });
}

std::unique_ptr<Recordset> SqliteConnection::open(std::string_view sql) {
  return withStatement(
      sql, [&] { return run(sql, Want::Rows); }, [this](const auto& error) { tell(error); });
}

std::string SqliteConnection::explainTranslation(std::string_view sql) {
  beginCall();
  const TranslationPtr translation = withStatement(
      sql,
      [&] {
        Asked asked{sql, {}};
        return translationOf(asked);
      },
      [](const auto&) {});
  std::string text;
  for (const tsql::Step& step : translation->translation.steps) {
    if (!text.empty()) text += '\n';
    text += step.text;
  }
  return text;
}

tsql::Catalogue& SqliteConnection::catalogue() {
  beginCall();
  refreshCatalogue();
  return catalogue_;
}

void SqliteConnection::setContext(const StatementContext* context) {
  guard_.setContext(context);
  deadline_.watch(context == nullptr ? nullptr : &context->isWanted);
}

RowBudget* SqliteConnection::rowBudget() const {
  return guard_.context() == nullptr ? nullptr : guard_.context()->budget;
}

SqliteConnection::ListStamp SqliteConnection::listStamp() {
  ListStamp stamp;
  if (sqlite3_step(dataVersion_.get()) == SQLITE_ROW) {
    stamp = {sqlite3_column_int64(dataVersion_.get(), 0), sqlite3_total_changes64(handle_.get())};
  }
  sqlite3_reset(dataVersion_.get());
  return stamp;
}

// The list is the connection's own question, whatever its borrower may ask.
bool SqliteConnection::refreshListed(std::chrono::milliseconds life) {
  const std::string_view query = guard_.listQuery();
  if (query.empty()) return false;
  const auto time = std::chrono::steady_clock::now();
  if (time - listedTime_ < life) return false;
  const ListStamp now = listStamp();
  listedTime_ = time;
  if (now == listedAt_) return false;
  struct Restore {
    SqliteConnection& connection;
    const StatementContext* context;
    ~Restore() { connection.setContext(context); }
  } const restore{*this, guard_.context()};
  setContext(nullptr);
  std::unordered_set<std::string> names;
  for (const auto rows = run(query, Want::Rows); !rows->atEnd(); rows->moveNext()) {
    const Variant name = rows->value(0);
    if (name.isText()) names.insert(text::foldedName(name.text()));
  }
  guard_.setListed(std::move(names));
  listedAt_ = now;
  return true;
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

bool SqliteConnection::refreshCatalogue() {
  if (!catalogue_.refresh()) return false;
  // Translations of another version are never used again, nor is what was prepared from them.
  statements_.clear();
  return true;
}

bool SqliteConnection::schemaChanged(const CachedTranslation& translation) {
  refreshCatalogue();
  return catalogue_.version() != translation.schemaVersion;
}

void SqliteConnection::schemaTouched() {
  catalogue_.forget();
  statements_.clear();
  if (!sqlite3_get_autocommit(handle_.get())) ddlPending_ = true;
}

TranslationPtr SqliteConnection::translationOf(Asked& asked) {
  TranslationPtr translation = knownOrNew(asked);
  // What was listed since then counts at once. The reading may have met another schema.
  const bool isReadAgain =
      !guard_.allows(translation->footprint) && refreshListed(std::chrono::milliseconds(0));
  if (isReadAgain) translation = knownOrNew(asked);
  guard_.checkText(*translation, asked.sql, catalogue_);
  return translation;
}

TranslationPtr SqliteConnection::knownOrNew(Asked& asked) {
  if (!tsql::shapeOf(asked.sql, asked.shape)) {
    asked.shape = {};
    return translate(asked);
  }
  TranslationPtr translation = translations_.find(asked.shape);
  if (translation && translation->schemaVersion == catalogue_.version()) return translation;
  if (translation && !schemaChanged(*translation)) return translation;
  return translate(asked);
}

TranslationPtr SqliteConnection::translate(const Asked& asked) {
  constexpr int kAttempts = 4;
  auto made = std::make_shared<CachedTranslation>();
  try {
    // Another process may change the schema while its tables are read.
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
      refreshCatalogue();
      made->translation = tsql::translate(asked.sql, catalogue_, translateOptions());
      if (!refreshCatalogue()) break;
    }
  } catch (const tsql::StatementError& error) {
    throw refusedStatement(error);
  }
  made->schemaVersion = catalogue_.version();
  for (const tsql::Touched& touched : made->translation.touched) {
    made->footprint.add(touched.access, touched.name);
  }
  const auto& steps = made->translation.steps;
  const bool isDdl = std::any_of(steps.begin(), steps.end(), [](const tsql::Step& step) {
    return step.role == tsql::StepRole::Ddl;
  });
  // A version number inside a transaction that changed the schema may come to mean something else
  // when that is rolled back. DDL and DELETE are kept out since they depend on who may run them.
  const bool isForAll = !isDdl && made->footprint.deletes.empty();
  const bool hasShape = !asked.shape.key.empty();
  if (hasShape && isForAll && !ddlPending_) translations_.insert(asked.shape, made);
  return made;
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

void SqliteConnection::reset() noexcept {
  rollback();
  identityInsert_.clear();
  allowDdl_ = false;
  setContext(nullptr);
  deadline_.setLimit(settings_.commandTimeout);
}

}  // namespace tarlo::database
