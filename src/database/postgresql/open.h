#pragma once
// Connects to a PostgreSQL server and sets the session up so that it does what the translations
// rely on. The connection string is libpq's own, read by libpq.

#include <string>

#include "database/database.h"
#include "database/postgresql/handle.h"

namespace tarlo::database {

// Throws DatabaseError (kConnectionFailed) with a description that says what is wrong and never
// holds a password. The handle is in pipeline mode and does not block.
PostgresqlHandle openPostgresql(const std::string& connection, const OpenOptions& options);

// What can be told to people: the hosts, ports and the database's name.
std::string describePostgresql(const std::string& connection);

}  // namespace tarlo::database
