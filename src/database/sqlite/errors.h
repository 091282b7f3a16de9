#pragma once
// The one place where SQLite's codes become database errors.

#include <sqlite3.h>

#include "database/error.h"

namespace tarlo::database {

// What the limit of temporary files gives in the place of SQLITE_FULL: an extended code that SQLite
// itself does not use.
inline constexpr int kTemporaryFilesFull = SQLITE_FULL | (120 << 8);

enum class SqliteCall { Open, Prepare, Run };

// The error of the last call on the handle, which gave `code`. Descriptions are plain; SQLite's own
// text is in native().
DatabaseError sqliteError(sqlite3* handle, int code, SqliteCall call);

// Whether the code means that the connection must not be used again.
bool losesConnection(int code);

}  // namespace tarlo::database
