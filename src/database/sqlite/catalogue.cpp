#include "database/sqlite/catalogue.h"

#include <algorithm>

#include "database/sqlite/errors.h"
#include "text/fold.h"
#include "tsql/print/sqlite_types.h"

namespace tarlo::database {
namespace {

constexpr const char* kTableQuery =
    "SELECT name, type, wr FROM pragma_table_list(?1) WHERE schema = 'main' "
    "AND name = ?1 COLLATE NOCASE AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'";
// `hidden` is 2 or 3 for a generated column, 1 for the arguments of a table-valued function.
constexpr const char* kColumnQuery =
    "SELECT name, type, \"notnull\", pk, hidden FROM pragma_table_xinfo(?1) WHERE hidden <> 1";

// Whatever a run leaves behind, the statement is ready for the next.
class Run {
 public:
  Run(sqlite3* handle, sqlite3_stmt* statement) : handle_(handle), statement_(statement) {}
  ~Run() { sqlite3_reset(statement_); }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  void bind(std::string_view text) {
    sqlite3_bind_text64(statement_, 1, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  bool next() {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) throw sqliteError(handle_, code, SqliteCall::Run);
    return false;
  }
  std::string text(int i) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, i));
    return text ? text : "";
  }
  std::int64_t number(int i) const { return sqlite3_column_int64(statement_, i); }

 private:
  sqlite3* handle_;
  sqlite3_stmt* statement_;
};

}  // namespace

SqliteCatalogue::SqliteCatalogue(sqlite3* handle, const ProcedureTable& procedures)
    : handle_(handle),
      procedures_(procedures),
      versionQuery_(prepareSqlite(handle, "PRAGMA schema_version")),
      tableQuery_(prepareSqlite(handle, kTableQuery)),
      columnQuery_(prepareSqlite(handle, kColumnQuery)) {}

const tsql::Table* SqliteCatalogue::findTable(std::string_view name) {
  const auto [found, isNew] = tables_.try_emplace(text::foldedName(name));
  if (isNew) {
    // Not left behind half-made when loading fails.
    struct Unfinished {
      SqliteCatalogue& catalogue;
      decltype(tables_)::iterator entry;
      bool done = false;
      ~Unfinished() {
        if (!done) catalogue.tables_.erase(entry);
      }
    } unfinished{*this, found};
    found->second = load(name);
    unfinished.done = true;
  }
  return found->second.get();
}

bool SqliteCatalogue::hasProcedure(std::string_view name) {
  return procedures_.byFoldedName.contains(text::foldedName(name));
}

bool SqliteCatalogue::refresh() {
  Run run(handle_, versionQuery_.get());
  const std::int64_t version = run.next() ? run.number(0) : 0;
  if (version == version_) return false;
  tables_.clear();
  version_ = version;
  return true;
}

void SqliteCatalogue::forget() {
  tables_.clear();
  version_ = kUnknown;
}

std::unique_ptr<tsql::Table> SqliteCatalogue::load(std::string_view name) {
  auto table = std::make_unique<tsql::Table>();
  if (!loadHead(name, *table)) return nullptr;
  loadColumns(*table);
  // A key of one column declared INTEGER is the rowid itself, which SQLite numbers.
  if (table->hasRowid && table->key.size() == 1) {
    tsql::Column& key = table->columns[table->key.front()];
    key.isIdentity = key.isIdentity && !key.isGenerated;
  } else {
    for (tsql::Column& column : table->columns) column.isIdentity = false;
  }
  return table;
}

bool SqliteCatalogue::loadHead(std::string_view name, tsql::Table& table) {
  Run run(handle_, tableQuery_.get());
  run.bind(name);
  if (!run.next()) return false;
  table.name = run.text(0);
  const bool withoutRowid = run.number(2) != 0;
  table.hasRowid = run.text(1) == "table" && !withoutRowid;
  return true;
}

void SqliteCatalogue::loadColumns(tsql::Table& table) {
  Run run(handle_, columnQuery_.get());
  run.bind(table.name);
  std::vector<std::pair<std::int64_t, std::size_t>> key;  // place in the key, column
  while (run.next()) {
    tsql::Column column;
    column.name = run.text(0);
    const std::string declared = run.text(1);
    column.type = tsql::typeOfDeclared(declared);
    column.isNullable = run.number(2) == 0;
    column.isGenerated = run.number(4) != 0;
    const std::int64_t place = run.number(3);
    if (place > 0) key.emplace_back(place, table.columns.size());
    column.isIdentity = place > 0 && text::equalsNoCase(declared, "INTEGER");
    table.columns.push_back(std::move(column));
  }
  std::sort(key.begin(), key.end());
  for (const auto& [place, index] : key) table.key.push_back(index);
}

}  // namespace tarlo::database
