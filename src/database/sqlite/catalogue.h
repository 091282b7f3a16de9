#pragma once
// The tables of a SQLite file, read one by one as statements name them, and read again when the
// schema has changed, by this process or another.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "database/procedures.h"
#include "database/sqlite/open.h"
#include "tsql/catalogue.h"

namespace tarlo::database {

class SqliteCatalogue final : public tsql::Catalogue {
 public:
  SqliteCatalogue(sqlite3* handle, const ProcedureTable& procedures);

  const tsql::Table* findTable(std::string_view name) override;
  bool hasProcedure(std::string_view name) override;

  static constexpr std::int64_t kUnknown = -1;
  // The file's schema version when refresh() last looked; kUnknown before.
  std::int64_t version() const { return version_; }
  // Looks at the file's schema version. When it has changed, forgets the tables and returns true.
  bool refresh();
  // Forgets everything, the version as well.
  void forget();

 private:
  std::unique_ptr<tsql::Table> load(std::string_view name);
  bool loadHead(std::string_view name, tsql::Table& table);
  void loadColumns(tsql::Table& table);

  sqlite3* handle_;
  const ProcedureTable& procedures_;
  SqliteStatement versionQuery_;
  SqliteStatement tableQuery_;
  SqliteStatement columnQuery_;
  std::int64_t version_ = kUnknown;
  // By folded name; null for a name without a table.
  std::unordered_map<std::string, std::unique_ptr<tsql::Table>> tables_;
};

}  // namespace tarlo::database
