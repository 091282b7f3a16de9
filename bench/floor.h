#pragma once
// The floors: the dictionary look-ups of a compile through the SQLite C interface, each prepared
// once and bound.

#include <sqlite3.h>

#include <string>
#include <vector>

namespace tarlo::bench {

class FloorStatement {
 public:
  FloorStatement(sqlite3* handle, const std::string& sql);
  ~FloorStatement() { sqlite3_finalize(statement_); }
  FloorStatement(const FloorStatement&) = delete;
  FloorStatement& operator=(const FloorStatement&) = delete;

  // Binds the number (to every parameter of the statement), reads all rows as text and gives them
  // row by row.
  std::vector<std::vector<std::string>> rows(int number);

 private:
  sqlite3_stmt* statement_ = nullptr;
};

// The text of each look-up as SQLite takes it best.
std::string fieldNameSql();
std::string tableNameSql();
std::string fieldIdsSql();

// Every look-up that compiling table 1 with its nine relations makes. Gives how many there were.
class CompileFloor {
 public:
  explicit CompileFloor(sqlite3* handle);
  int run();

 private:
  FloorStatement fieldName_, tableName_, fieldIds_, farRelations_, directRelations_;
};

// The same names in one joined read: tables and fields of table 1 and those that its relations
// reach.
std::string joinedSql();

}  // namespace tarlo::bench
