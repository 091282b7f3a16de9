#include "database/translating_connection.h"

#include <fmt/format.h>

#include <algorithm>

#include "text/fold.h"

namespace tarlo::database {
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

void TranslatingConnection::tell(const DatabaseError& error) const noexcept {
  if (guard_.context() != nullptr) guard_.context()->tell(error);
}

void TranslatingConnection::execute(std::string_view sql) {
  withStatement(
      sql, [&] { run(sql, Want::Nothing); }, [this](const auto& error) { tell(error); });
}

std::unique_ptr<Recordset> TranslatingConnection::open(std::string_view sql) {
  return withStatement(
      sql, [&] { return run(sql, Want::Rows); }, [this](const auto& error) { tell(error); });
}

std::string TranslatingConnection::explainTranslation(std::string_view sql) {
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

tsql::Catalogue& TranslatingConnection::catalogue() {
  beginCall();
  refreshTables();
  return tables();
}

void TranslatingConnection::setContext(const StatementContext* context) {
  guard_.setContext(context);
  deadline_.watch(context == nullptr ? nullptr : &context->isWanted);
}

RowBudget* TranslatingConnection::rowBudget() const {
  return guard_.context() == nullptr ? nullptr : guard_.context()->budget;
}

void TranslatingConnection::reset() noexcept {
  rollback();
  identityInsert_.clear();
  allowDdl_ = false;
  setContext(nullptr);
  deadline_.setLimit(commandTimeout_);
}

// The list is the connection's own question, whatever its borrower may ask.
bool TranslatingConnection::refreshListed(std::chrono::milliseconds life) {
  const std::string_view query = guard_.listQuery();
  if (query.empty()) return false;
  const auto time = std::chrono::steady_clock::now();
  if (time - listedTime_ < life) return false;
  const ListStamp now = listStamp();
  listedTime_ = time;
  if (now == listedAt_) return false;
  struct Restore {
    TranslatingConnection& connection;
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

TranslationPtr TranslatingConnection::translationOf(Asked& asked) {
  TranslationPtr translation = knownOrNew(asked);
  // What was listed since then counts at once. The reading may have met another schema.
  const bool isReadAgain =
      !guard_.allows(translation->footprint) && refreshListed(std::chrono::milliseconds(0));
  if (isReadAgain) translation = knownOrNew(asked);
  guard_.checkText(*translation, asked.sql, tables());
  return translation;
}

TranslationPtr TranslatingConnection::knownOrNew(Asked& asked) {
  if (!tsql::shapeOf(asked.sql, asked.shape)) {
    asked.shape = {};
    return translate(asked);
  }
  TranslationPtr translation = translations_.find(asked.shape);
  return translation && isCurrent(*translation) ? translation : translate(asked);
}

TranslationPtr TranslatingConnection::translate(const Asked& asked) {
  auto made = std::make_shared<CachedTranslation>();
  try {
    made->translation = translateNow(asked.sql);
  } catch (const tsql::StatementError& error) {
    throw refusedStatement(error);
  }
  stamp(*made);
  for (const tsql::Touched& touched : made->translation.touched) {
    made->footprint.add(touched.access, touched.name);
  }
  // What a transaction has changed may be rolled back, and its stamp then come to mean something
  // else. DDL and DELETE are kept out since they depend on who may run them.
  const bool isForAll = !isDdl(made->translation) && made->footprint.deletes.empty();
  const bool hasShape = !asked.shape.key.empty();
  if (hasShape && isForAll && !isDdlPending()) translations_.insert(asked.shape, made);
  return made;
}

std::unique_ptr<Recordset> TranslatingConnection::run(std::string_view sql, Want want) {
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

void TranslatingConnection::applyIdentityInsert(const tsql::Translation& translation) {
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

void TranslatingConnection::refuseLiteral(const Asked& asked, const tsql::StatementError& error) {
  try {
    tsql::translate(asked.sql, tables(), translateOptions());
  } catch (const tsql::StatementError& placed) {
    throw refusedStatement(placed);
  }
  throw refusedStatement(error);
}

bool TranslatingConnection::isDdl(const tsql::Translation& translation) {
  return std::any_of(translation.steps.begin(), translation.steps.end(),
                     [](const tsql::Step& step) { return step.role == tsql::StepRole::Ddl; });
}

std::size_t TranslatingConnection::writesOf(const tsql::Translation& translation) {
  const auto writes =
      std::count_if(translation.steps.begin(), translation.steps.end(),
                    [](const tsql::Step& step) { return step.role != tsql::StepRole::Rows; });
  return static_cast<std::size_t>(writes);
}

DatabaseError TranslatingConnection::refused(std::string text) {
  std::string description = text;
  return DatabaseError(kStatementFailed, std::move(description),
                       {.engine = "tsql", .code = 0, .sqlState = "42000", .text = std::move(text)});
}

}  // namespace tarlo::database
