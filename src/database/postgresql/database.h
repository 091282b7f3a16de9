#pragma once
// A database of a PostgreSQL server, as a pool of connections.

#include <memory>
#include <string>

#include "database/database.h"

namespace tarlo::database {

// `connection` is libpq's own string, read by libpq: a URI or keywords, with several hosts,
// encryption, a password file, a service. Makes a first connection, so that a server that cannot
// serve is told at once.
std::unique_ptr<Database> openPostgresqlDatabase(std::string connection,
                                                 const OpenOptions& options);

// Runs a script in the server's own language as one transaction, for what translated statements
// call there. Throws DatabaseError.
void runPostgresqlScript(const std::string& connection, const std::string& script);

}  // namespace tarlo::database
