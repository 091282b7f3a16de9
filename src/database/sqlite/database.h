#pragma once
// A SQLite file, or one database in memory, as a pool of connections.

#include <memory>
#include <string>

#include "database/database.h"

namespace tarlo::database {

// `path` is the file, or ":memory:" for a database that lives with the object and so has one
// connection only. Makes a first connection, so that a file that cannot serve is told at once.
std::unique_ptr<Database> openSqliteDatabase(std::string path, const OpenOptions& options);

}  // namespace tarlo::database
