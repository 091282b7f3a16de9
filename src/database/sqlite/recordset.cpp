#include "database/sqlite/recordset.h"

#include "database/sqlite/connection.h"
#include "database/sqlite/values.h"

namespace tarlo::database {
namespace {

[[noreturn]] void throwNoSuchField() {
  throw RuntimeError(kNoSuchField, "The recordset has no field of that number.", "database");
}

}  // namespace

SqliteRecordset::SqliteRecordset(SqliteConnection& connection, StatementCache::Use statement,
                                 bool hasRow)
    : connection_(connection),
      statement_(std::move(statement)),
      columns_(statement_.translation()->translation.columns),
      hasRow_(hasRow) {}

Variant SqliteRecordset::value(std::size_t i) const {
  if (!hasRow_) throw noCurrentRow();
  if (i >= columns_.size()) throwNoSuchField();
  return readColumn(statement_.get(), static_cast<int>(i), columns_[i].type);
}

void SqliteRecordset::step() {
  const int code = sqlite3_step(statement_.get());
  hasRow_ = code == SQLITE_ROW;
  if (code != SQLITE_ROW && code != SQLITE_DONE) connection_.failRun(code, statement_.get());
}

void SqliteRecordset::moveNext() {
  if (!hasRow_) throw noCurrentRow();
  connection_.beginCall();
  step();
}

void SqliteRecordset::fetchRows(std::vector<Variant>& cells, std::size_t maxRows) {
  connection_.beginCall();
  const int columns = static_cast<int>(columns_.size());
  cells.reserve(columns_.size());
  for (std::size_t row = 0; row < maxRows && hasRow_; ++row) {
    for (int i = 0; i < columns; ++i) {
      cells.push_back(readColumn(statement_.get(), i, columns_[static_cast<std::size_t>(i)].type));
    }
    step();
  }
}

const std::string& StoredRecordset::fieldName(std::size_t i) const {
  if (i >= fields_) throwNoSuchField();
  return title_;
}

Variant StoredRecordset::value(std::size_t i) const {
  if (atEnd()) throw noCurrentRow();
  if (i >= fields_) throwNoSuchField();
  return values_[row_];
}

void StoredRecordset::moveNext() {
  if (atEnd()) throw noCurrentRow();
  ++row_;
}

}  // namespace tarlo::database
