#pragma once
// EXEC on a server that cannot call the host: a step gives the inputs as its one row, the host's
// procedure is called with them, and what it gives is the row of the statement.

#include <libpq-fe.h>

#include "database/procedures.h"
#include "tsql/translation.h"

namespace tarlo::database {

// The value of the OUT argument, by the kind of the statement's column. Throws DatabaseError where
// the procedure fails.
Variant callProcedure(const ProcedureTable& procedures, const tsql::Translation& translation,
                      const PGresult* inputs);

}  // namespace tarlo::database
