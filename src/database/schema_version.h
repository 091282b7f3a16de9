#pragma once
// Which version of the platform's tables a database holds. A program works with one version only:
// on an older one statements would fail in the middle of a page, on a newer one it might write what
// that does not expect.

#include <string>
#include <string_view>

#include "database/connection.h"

namespace tarlo::database {

// Of the scripts in schema/tables. Goes up whenever a table or a column is added there.
inline constexpr int kSchemaVersion = 1;

struct StoredSchema {
  int version = 0;     // 0: the database says none
  std::string writer;  // the program that wrote it
};

// Throws DatabaseError.
StoredSchema storedSchema(Connection& connection);
// Notes that the database holds kSchemaVersion from now on. `writer` names this program.
void storeSchemaVersion(Connection& connection, std::string_view writer);

}  // namespace tarlo::database
