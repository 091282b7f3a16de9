#pragma once
// Evaluates SQLite expressions on a bare handle that has the functions.

#include <sqlite3.h>

#include <memory>
#include <string>

#include "database/procedures.h"
#include "database/sqlite/functions.h"

namespace tarlo::database {

struct FunctionRowCase {
  std::string expression;
  std::string expected;  // "NULL", or "error: " and a piece of the message
};

class FunctionHandle {
 public:
  FunctionHandle() {
    sqlite3_open(":memory:", &handle_);
    registerSqliteFunctions(handle_, procedures_);
  }
  ~FunctionHandle() { sqlite3_close(handle_); }
  FunctionHandle(const FunctionHandle&) = delete;
  FunctionHandle& operator=(const FunctionHandle&) = delete;

  // The value as text; "error: message" for a statement that fails.
  std::string evaluate(const std::string& expression) {
    sqlite3_stmt* statement = nullptr;
    const std::string sql = "SELECT " + expression;
    std::string result;
    if (sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
      result = text ? text : "NULL";
    } else {
      result = std::string("error: ") + sqlite3_errmsg(handle_);
    }
    sqlite3_finalize(statement);
    return result;
  }

  // Whether the outcome is the expected one; an error is found by a piece of its message.
  bool gives(const FunctionRowCase& row, std::string& actual) {
    actual = evaluate(row.expression);
    if (row.expected.rfind("error: ", 0) != 0) return actual == row.expected;
    return actual.rfind("error: ", 0) == 0 &&
           actual.find(row.expected.substr(7)) != std::string::npos;
  }

  ProcedureTable& procedures() { return procedures_; }

 private:
  ProcedureTable procedures_;
  sqlite3* handle_ = nullptr;
};

}  // namespace tarlo::database
