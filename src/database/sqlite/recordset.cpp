#include "database/sqlite/recordset.h"

#include "database/sqlite/connection.h"
#include "database/sqlite/values.h"

#include <utility>

namespace tarlo::database {

SqliteRecordset::SqliteRecordset(SqliteConnection& connection, StatementCache::Use statement,
                                 bool hasRow)
    : connection_(connection),
      statement_(std::move(statement)),
      columns_(statement_.translation()->translation.columns),
      hasRow_(hasRow) {}

Variant SqliteRecordset::value(std::size_t i) const {
  if (!hasRow_) throw noCurrentRow();
  if (i >= columns_.size()) throw noSuchField();
  return readColumn(statement_.get(), static_cast<int>(i), columns_[i].type);
}

void SqliteRecordset::step() {
  const int code = connection_.nextStep(statement_.get());
  hasRow_ = code == SQLITE_ROW;
  if (code != SQLITE_ROW && code != SQLITE_DONE) connection_.failRun(code, statement_.get());
}

void SqliteRecordset::moveNext() {
  if (!hasRow_) throw noCurrentRow();
  connection_.beginCall();
  step();
}

void SqliteRecordset::fetchRows(std::vector<Variant>& cells, std::size_t maxRows) {
  constexpr std::size_t kBytesAtOnce = 64 << 10;
  connection_.beginCall();
  RowBudget* budget = connection_.rowBudget();
  const int columns = static_cast<int>(columns_.size());
  cells.reserve(columns_.size());
  std::size_t bytes = 0;
  for (std::size_t row = 0; row < maxRows && hasRow_; ++row) {
    for (int i = 0; i < columns; ++i) {
      cells.push_back(readColumn(statement_.get(), i, columns_[static_cast<std::size_t>(i)].type));
      bytes += sizeOf(cells.back());
    }
    if (budget != nullptr && bytes >= kBytesAtOnce) budget->take(std::exchange(bytes, 0));
    step();
  }
  if (budget != nullptr) budget->take(bytes);
}

}  // namespace tarlo::database
