#include "database/error.h"

#include <algorithm>

namespace tarlo::database {

void DatabaseError::setStatement(std::string_view statement) {
  std::size_t end = std::min(statement.size(), kMaxStatementBytes);
  const auto isContinuation = [&] {
    return end < statement.size() && (static_cast<unsigned char>(statement[end]) & 0xC0) == 0x80;
  };
  while (end > 0 && isContinuation()) --end;
  native_.statement.assign(statement, 0, end);
}

DatabaseError refusedStatement(const tsql::StatementError& error) {
  return DatabaseError(kStatementFailed, error.what(),
                       {.engine = "tsql", .code = 0, .sqlState = "42000", .text = error.what()});
}

}  // namespace tarlo::database
