#pragma once
// tsql_exec: calls a registered procedure from a statement.

#include <sqlite3.h>

namespace tarlo::database {
struct ProcedureTable;

// tsql_exec(name, inputs...) gives the OUT value. Returns SQLite's code.
int registerExec(sqlite3* handle, const ProcedureTable& procedures);

}  // namespace tarlo::database
