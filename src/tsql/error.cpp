#include "tsql/error.h"

#include <fmt/format.h>

namespace tarlo::tsql {

StatementError::StatementError(Refusal refusal, Position position, std::string_view message)
    : std::runtime_error(
          fmt::format("line {}, column {}: {}", position.line, position.column, message)),
      refusal_(refusal),
      position_(position),
      message_(message) {}

}  // namespace tarlo::tsql
