#pragma once
// The tables of a PostgreSQL database: the names of all, read in one piece, and the columns of each
// as statements name them.
//
// Another session may change a table at any time. A table has a stamp, the sum of the numbers of
// the transactions that wrote its row in pg_class and its columns' rows in pg_attribute: every
// CREATE, ALTER, RENAME and DROP gives one of them a higher number or takes it away. A translation
// knows the sum of the stamps of its tables, and whoever runs it asks for that sum in the same
// transaction (kCheckText): a look-up by index that costs a tenth of a round trip and none of its
// own. A stamp of the whole schema would cost 16 ms with 1000 tables. So a statement never runs on
// tables other than those it was translated for, and prepared statements stay, as the server renews
// their plans itself. A changed primary key alone goes unnoticed until the table is read again; it
// decides the order of rows only.

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/postgresql/handle.h"
#include "database/procedures.h"
#include "tsql/catalogue.h"

namespace tarlo::database {

class PostgresqlCatalogue final : public tsql::Catalogue {
 public:
  // Asks the server one of the questions below. Throws DatabaseError.
  using Ask =
      std::function<PostgresqlResult(const char* question, std::span<const char* const> values)>;
  PostgresqlCatalogue(const ProcedureTable& procedures, Ask ask)
      : procedures_(procedures), ask_(std::move(ask)) {}

  // Throws StatementError where several tables have the name but for case, or several columns.
  const tsql::Table* findTable(std::string_view name) override;
  bool hasProcedure(std::string_view name) override;

  struct Stamp {
    std::string tables;  // their numbers, as an array of the server's
    std::int64_t sum = 0;
  };
  // Of the named tables, which have been read.
  Stamp stampOf(std::span<const tsql::Touched> touched) const;
  // Whether a table that has been read is another now; then all are forgotten.
  bool refresh();
  void forget();
  // Why a column of that name is not among those of a table that has been read; "" when no such
  // column was left out.
  std::string whyLeftOut(std::string_view column) const;

  // Prepared under these names by the connection.
  static constexpr const char* kNames = "tarlo_names";
  static constexpr const char* kNamesText =
      "SELECT c.oid, c.relname, n.nspname, c.xmin::text::bigint FROM pg_catalog.pg_class c "
      "JOIN pg_catalog.pg_namespace n ON n.oid=c.relnamespace "
      "WHERE n.nspname=ANY(current_schemas(false)) AND c.relkind IN ('r','v','m','p','f') "
      "ORDER BY array_position(current_schemas(false),n.nspname), c.relname";
  static constexpr const char* kColumns = "tarlo_columns";
  static const char* const kColumnsText;
  static constexpr const char* kSum = "tarlo_sum";
  static constexpr const char* kSumText =
      "SELECT coalesce(sum(a.xmin::text::bigint),0)+(SELECT coalesce(sum(c.xmin::text::bigint),0) "
      "FROM pg_catalog.pg_class c WHERE c.oid=ANY($1::oid[])) FROM pg_catalog.pg_attribute a "
      "WHERE a.attrelid=ANY($1::oid[]) AND a.attnum>0";
  static constexpr const char* kCheck = "tarlo_check";
  // An error (22012) unless the columns of the tables $1 have the stamp $2.
  static constexpr const char* kCheckText =
      "SELECT 1/(coalesce(sum(a.xmin::text::bigint),0)+(SELECT "
      "coalesce(sum(c.xmin::text::bigint),0)"
      " FROM pg_catalog.pg_class c WHERE c.oid=ANY($1::oid[]))=$2::bigint)::int "
      "FROM pg_catalog.pg_attribute a WHERE a.attrelid=ANY($1::oid[]) AND a.attnum>0";

 private:
  struct Known {
    tsql::Table table;
    std::string number;  // the server's
    std::int64_t stamp = 0;
    std::string fault;                                         // why it cannot be named
    std::vector<std::pair<std::string, std::string>> leftOut;  // column, why
  };
  struct Named {
    std::string number;
    std::string name;
    std::string schema;
    std::int64_t stamp = 0;  // of its row in pg_class
    bool isTwice = false;
  };

  static void add(Stamp& stamp, const Known& known);
  void readNames();
  std::unique_ptr<Known> load(const Named& named);
  void addColumn(Known& known, const PGresult* rows, int row,
                 std::vector<std::pair<int, std::size_t>>& key) const;

  const ProcedureTable& procedures_;
  Ask ask_;
  bool hasNames_ = false;
  std::unordered_map<std::string, Named> names_;  // by folded name
  std::unordered_map<std::string, std::unique_ptr<Known>> tables_;
};

}  // namespace tarlo::database
