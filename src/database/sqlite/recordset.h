#pragma once
// The rows of a SQLite statement, read as the cursor moves.

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

}  // namespace tarlo::database
