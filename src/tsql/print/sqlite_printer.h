#pragma once
// Resolved tree to SQLite. The functions whose names begin with "tsql_" and the collation TSQL are
// registered on every connection by database/sqlite/functions.h; everything else is SQLite's own.

#include "tsql/ast/statement.h"
#include "tsql/translation.h"

namespace tarlo::tsql {

// Adds the steps of the batch to `translation` and lists its fixed literals. Throws StatementError
// (Unsupported) for what SQLite cannot be given faithfully.
void printSqlite(const ast::Batch& batch, Catalogue& catalogue, Translation& translation);

}  // namespace tarlo::tsql
