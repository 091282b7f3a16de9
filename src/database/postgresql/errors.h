#pragma once
// The one place where what a PostgreSQL server says becomes database errors. Descriptions are
// plain; the server's own text is in native(), without the statement's values or a password.

#include <string>
#include <string_view>

#include "database/error.h"
#include "database/postgresql/handle.h"

namespace tarlo::database {

// The five characters of a failed result, "" when it has none.
std::string_view sqlStateOf(const PGresult* result);

// A statement that the server refused.
DatabaseError postgresqlError(const PGresult* result);

// No connection could be made: the handle says why. `isPasswordAsked` when the server wanted one.
DatabaseError connectError(PGconn* handle);

// The connection broke while something was being done that is not done now.
DatabaseError lostError(std::string text);
// The same, where nobody knows whether it was done.
DatabaseError unknownOutcome(std::string text);

// Whether the state means that the connection must not be used again.
bool losesConnection(std::string_view sqlState);

// Whether the statement may have met other tables than it was translated for.
bool isSchemaTrouble(std::string_view sqlState);

}  // namespace tarlo::database
