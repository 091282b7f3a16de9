#include "database/sqlite/functions.h"

#include <sqlite3.h>

#include "database/error.h"
#include "database/procedures.h"
#include "database/sqlite/function_call.h"

namespace tarlo::database {
namespace {

void check(sqlite3* handle, int code) {
  if (code == SQLITE_OK) return;
  const std::string text = sqlite3_errmsg(handle);
  throw DatabaseError(kConnectionFailed, "functions could not be registered: " + text,
                      {"sqlite", sqlite3_extended_errcode(handle), "HY000", text});
}

void registerRows(sqlite3* handle, std::span<const FunctionRow> rows) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  for (const FunctionRow& row : rows) {
    // SQLite hands the row back untouched; runFunction only reads it.
    void* data = const_cast<FunctionRow*>(&row);
    check(handle, sqlite3_create_function_v2(handle, row.name, row.arity, kFlags, data, runFunction,
                                             nullptr, nullptr, nullptr));
  }
}

void registerRows(sqlite3* handle, std::span<const AggregateRow> rows) {
  for (const AggregateRow& row : rows) check(handle, registerAggregate(handle, row));
}

}  // namespace

void registerSqliteFunctions(sqlite3* handle, const ProcedureTable& procedures) {
  registerRows(handle, textFunctions());
  registerRows(handle, searchFunctions());
  registerRows(handle, numberFunctions());
  registerRows(handle, numberTextFunctions());
  registerRows(handle, dateFunctions());
  registerRows(handle, orderFunctions());
  registerRows(handle, orderAggregates());
  check(handle, registerCollation(handle));
  check(handle, registerAggregates(handle));
  check(handle, registerExec(handle, procedures));
}

}  // namespace tarlo::database
