#include "dictionary.h"

#include <fmt/format.h>
#include <sqlite3.h>
#include <unistd.h>

#include <stdexcept>

#include "database/script.h"
#include "embedded_schema.h"

namespace tarlo::bench {

namespace {

void exec(sqlite3* handle, const std::string& sql) {
  char* message = nullptr;
  if (sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
    throw std::runtime_error(fmt::format("{}: {}", message ? message : "error", sql));
  }
}

void fill(sqlite3* handle) {
  exec(handle, "BEGIN");
  for (int table = 1; table <= kTables; ++table) {
    exec(handle, fmt::format("INSERT INTO Zembra_DataDict_Table(Zembra_ID,DDT_Name,DDT_CName) "
                             "VALUES({0},'UserTb_T{0}','表{0}')",
                             table));
    for (int field = 0; field < kFieldsPerTable; ++field) {
      exec(handle,
           fmt::format("INSERT INTO "
                       "Zembra_DataDict_Field(Zembra_ID,DDF_TableID,DDF_Name,DDF_CName,DDF_Type) "
                       "VALUES({},{},'{}','字段{}',{})",
                       table * 100 + field, table,
                       field == 0 ? "Zembra_ID" : fmt::format("F{}", field), field,
                       field == 0 ? 1 : 0));
    }
  }
  for (int relation = 1; relation <= 9; ++relation) {
    exec(handle,
         fmt::format(
             "INSERT INTO Zembra_DataDict_Relation(Zembra_ID,DDR_MainTableID,DDR_MainFieldID,"
             "DDR_RelationTableID,DDR_RelationFieldID) VALUES({},1,{},{},{})",
             relation, 100 + relation, relation + 1, (relation + 1) * 100));
  }
  exec(handle, "COMMIT");
}

void makeBusinessTables(sqlite3* handle, int count) {
  exec(handle, "BEGIN");
  for (int table = 1; table <= count; ++table) {
    std::string sql =
        fmt::format("CREATE TABLE UserTb_T{}(Zembra_ID INTEGER PRIMARY KEY AUTOINCREMENT", table);
    for (int field = 1; field < kFieldsPerTable; ++field) sql += fmt::format(",F{} INTEGER", field);
    exec(handle, sql + ",Zembra_Flag INTEGER DEFAULT 1)");
  }
  exec(handle, "COMMIT");
}

}  // namespace

sqlite3* openRaw(const std::string& file) {
  sqlite3* handle = nullptr;
  if (sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                      nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot open " + file);
  }
  return handle;
}

Dictionary::Dictionary(bool businessTables) {
  file_ = (std::filesystem::temp_directory_path() /
           fmt::format("tarlo-bench-{}-{}.db", getpid(), businessTables))
              .string();
  std::filesystem::remove(file_);
  database::OpenOptions options;
  options.create = true;
  {
    const auto database = database::openDatabase(connectionString(), options);
    auto connection = database->borrow();
    connection->allowDdl(true);
    database::runScript(*connection, embedded::schema::find("tables/20_dictionary.sql"));
  }
  sqlite3* handle = openRaw(file_);
  fill(handle);
  makeBusinessTables(handle, businessTables ? kTables : 10);
  sqlite3_close(handle);
  page_ = std::make_unique<frame::LocalPage>(databases_, connectionString());
}

Dictionary::~Dictionary() {
  page_.reset();
  for (const char* ending : {"", "-wal", "-shm"}) std::filesystem::remove(file_ + ending);
}

}  // namespace tarlo::bench
