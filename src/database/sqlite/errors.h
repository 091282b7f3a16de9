#pragma once
// The one place where SQLite's codes become database errors.

#include <sqlite3.h>

#include "database/error.h"

namespace tarlo::database {

enum class SqliteCall { Open, Prepare, Run };

// The error of the last call on the handle, which gave `code`. Descriptions are plain; SQLite's own
// text is in native().
DatabaseError sqliteError(sqlite3* handle, int code, SqliteCall call);

// Whether the code means that the connection must not be used again.
bool losesConnection(int code);

}  // namespace tarlo::database
