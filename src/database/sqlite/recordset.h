#pragma once
// Recordsets of the SQLite engine: rows as SQLite gives them, and rows already read.

#include <string>
#include <vector>

#include "database/recordset.h"
#include "database/sqlite/statement_cache.h"

namespace tarlo::database {

class SqliteConnection;

class SqliteRecordset final : public Recordset {
 public:
  // The statement has been stepped once; `hasRow` says whether that gave a row.
  SqliteRecordset(SqliteConnection& connection, StatementCache::Use statement, bool hasRow);

  std::size_t fieldCount() const override { return columns_.size(); }
  const std::string& fieldName(std::size_t i) const override { return columns_.at(i).title; }
  bool atEnd() const override { return !hasRow_; }
  Variant value(std::size_t i) const override;
  void moveNext() override;

 protected:
  void fetchRows(std::vector<Variant>& cells, std::size_t maxRows) override;

 private:
  void step();

  SqliteConnection& connection_;
  StatementCache::Use statement_;
  const std::vector<tsql::ResultColumn>& columns_;  // of the translation that the statement keeps
  bool hasRow_;
};

// Nothing, or one column whose values are given.
class StoredRecordset final : public Recordset {
 public:
  StoredRecordset() = default;
  StoredRecordset(std::string title, std::vector<Variant> values)
      : fields_(1), title_(std::move(title)), values_(std::move(values)) {}

  std::size_t fieldCount() const override { return fields_; }
  const std::string& fieldName(std::size_t i) const override;
  bool atEnd() const override { return row_ >= values_.size(); }
  Variant value(std::size_t i) const override;
  void moveNext() override;

 private:
  std::size_t fields_ = 0;
  std::string title_;
  std::vector<Variant> values_;
  std::size_t row_ = 0;
};

}  // namespace tarlo::database
