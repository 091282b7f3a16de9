#include "database/error.h"

#include "text/utf8.h"

namespace tarlo::database {

void DatabaseError::setStatement(std::string_view statement) {
  native_.statement = text::wholeCharacters(statement, kMaxStatementBytes);
}

DatabaseError refusedStatement(const tsql::StatementError& error) {
  return DatabaseError(kStatementFailed, error.what(),
                       {.engine = "tsql", .code = 0, .sqlState = "42000", .text = error.what()});
}

}  // namespace tarlo::database
