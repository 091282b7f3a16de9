#pragma once
// The functions and the collation that translated statements use on SQLite. Registered on every
// connection.

struct sqlite3;

namespace tarlo::database {
struct ProcedureTable;

// Registers the collation TSQL and all tsql_* functions. `procedures` serves tsql_exec and outlives
// the connection. Throws DatabaseError when SQLite refuses.
void registerSqliteFunctions(sqlite3* handle, const ProcedureTable& procedures);

// tsql_exec(name, inputs...), which calls a registered procedure and gives its OUT value. Returns
// SQLite's code.
int registerExec(sqlite3* handle, const ProcedureTable& procedures);

}  // namespace tarlo::database
