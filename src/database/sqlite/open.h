#pragma once
// Opens a SQLite file and sets the connection up so that it does what the translations rely on.

#include <memory>
#include <string>

#include <sqlite3.h>

#include "database/database.h"
#include "database/procedures.h"

namespace tarlo::database {

struct CloseSqlite {
  void operator()(sqlite3* handle) const { sqlite3_close(handle); }
};
using SqliteHandle = std::unique_ptr<sqlite3, CloseSqlite>;

struct FinalizeSqlite {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using SqliteStatement = std::unique_ptr<sqlite3_stmt, FinalizeSqlite>;

// Settings of the library as a whole; they can be made only before it is used. Does nothing after
// the first call.
void setUpSqlite();

// `vfs` is the file layer to use, nullptr for the system's. Throws DatabaseError
// (kConnectionFailed, or kTimeout for a locked file) with a description that says what is wrong
// with the file. `procedures` outlives the handle.
SqliteHandle openSqliteFile(const std::string& path, const OpenOptions& options,
                            const ProcedureTable& procedures, const char* vfs = nullptr);

// A statement of the engine's own, kept for the life of the connection.
SqliteStatement prepareSqlite(sqlite3* handle, const char* text);

}  // namespace tarlo::database
