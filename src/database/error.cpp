#include "database/error.h"

namespace tarlo::database {

DatabaseError refusedStatement(const tsql::StatementError& error) {
  return DatabaseError(kStatementFailed, error.what(),
                       {.engine = "tsql", .code = 0, .sqlState = "42000", .text = error.what()});
}

}  // namespace tarlo::database
