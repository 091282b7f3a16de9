#pragma once
// The rows of a PostgreSQL statement, as they come from the server. When the connection is wanted
// for something else, those that are still to come are read into memory first.

#include <deque>
#include <optional>

#include "database/error.h"
#include "database/postgresql/handle.h"
#include "database/recordset.h"
#include "database/row_budget.h"
#include "database/translation_cache.h"

namespace tarlo::database {

class PostgresqlConnection;

class PostgresqlRecordset final : public Recordset {
 public:
  // `first` holds the first rows; with `hasMore` further ones come from the connection.
  PostgresqlRecordset(PostgresqlConnection& connection, TranslationPtr translation,
                      PostgresqlResult first, bool hasMore);
  ~PostgresqlRecordset() override;

  std::size_t fieldCount() const override { return columns_.size(); }
  const std::string& fieldName(std::size_t i) const override { return columns_.at(i).title; }
  bool atEnd() const override { return row_ >= rows_; }
  Variant value(std::size_t i) const override;
  void moveNext() override;

  // For the connection: reads the rest into memory. What fails there is told when the cursor comes
  // to it.
  void spool();
  // Nothing more comes.
  void detach() { connection_ = nullptr; }

 protected:
  void fetchRows(std::vector<Variant>& cells, std::size_t maxRows) override;

 private:
  void step();
  void take(PostgresqlResult result);

  PostgresqlConnection* connection_;  // nothing when all has come
  RowBudget* budget_;
  TranslationPtr translation_;
  const std::vector<tsql::ResultColumn>& columns_;
  PostgresqlResult current_;
  int row_ = 0;
  int rows_ = 0;  // of `current_`
  std::deque<PostgresqlResult> spooled_;
  std::optional<DatabaseError> failure_;
};

}  // namespace tarlo::database
