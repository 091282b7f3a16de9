#include "database/postgresql/recordset.h"

#include <utility>

#include "database/postgresql/connection.h"
#include "database/postgresql/values.h"

namespace tarlo::database {
namespace {

// Read to make room for another statement, while nobody has a budget.
constexpr std::size_t kMostSpooledBytes = 256u << 20;

}  // namespace

PostgresqlRecordset::PostgresqlRecordset(PostgresqlConnection& connection,
                                         TranslationPtr translation, PostgresqlResult first,
                                         bool hasMore)
    : connection_(hasMore ? &connection : nullptr),
      budget_(connection.rowBudget()),
      translation_(std::move(translation)),
      columns_(translation_->translation.columns) {
  take(std::move(first));
}

PostgresqlRecordset::~PostgresqlRecordset() {
  if (connection_ != nullptr) connection_->leave();
}

void PostgresqlRecordset::take(PostgresqlResult result) {
  current_ = std::move(result);
  row_ = 0;
  rows_ = current_ ? PQntuples(current_.get()) : 0;
}

Variant PostgresqlRecordset::value(std::size_t i) const {
  if (atEnd()) throw noCurrentRow();
  if (i >= columns_.size()) throw noSuchField();
  return readField(current_.get(), row_, static_cast<int>(i), columns_[i].type);
}

void PostgresqlRecordset::step() {
  if (++row_ < rows_) return;
  if (!spooled_.empty()) {
    take(std::move(spooled_.front()));
    spooled_.pop_front();
    return;
  }
  take(nullptr);
  if (failure_) throw DatabaseError(*std::exchange(failure_, std::nullopt));
  if (connection_ == nullptr) return;
  PostgresqlResult row = connection_->nextRow();
  if (row) take(std::move(row));
}

void PostgresqlRecordset::moveNext() {
  if (atEnd()) throw noCurrentRow();
  if (connection_ != nullptr) connection_->beginCall();
  step();
}

void PostgresqlRecordset::fetchRows(std::vector<Variant>& cells, std::size_t maxRows) {
  constexpr std::size_t kBytesAtOnce = 64 << 10;
  if (connection_ != nullptr) connection_->beginCall();
  const int columns = static_cast<int>(columns_.size());
  std::size_t bytes = 0;
  for (std::size_t row = 0; row < maxRows && !atEnd(); ++row) {
    for (int i = 0; i < columns; ++i) {
      cells.push_back(
          readField(current_.get(), row_, i, columns_[static_cast<std::size_t>(i)].type));
      bytes += sizeOf(cells.back());
    }
    if (budget_ != nullptr && bytes >= kBytesAtOnce) budget_->take(std::exchange(bytes, 0));
    step();
  }
  if (budget_ != nullptr) budget_->take(bytes);
}

void PostgresqlRecordset::spool() {
  std::size_t bytes = 0;
  while (connection_ != nullptr && bytes <= kMostSpooledBytes) {
    PostgresqlResult row;
    failure_ = connection_->tryNextRow(row);
    if (!row) return;
    bytes += PQresultMemorySize(row.get());
    spooled_.push_back(std::move(row));
  }
  if (connection_ == nullptr) return;
  connection_->leave();
  failure_.emplace(
      kTooManyRows, "The rows of an open recordset are too many to keep.",
      DatabaseError::Native{.engine = "postgresql", .code = 0, .sqlState = "54000", .text = ""});
}

}  // namespace tarlo::database
