#pragma once
// A refused statement: text that cannot be parsed, a name that cannot be resolved, a construct that
// SQL Server refuses, or one that the engine cannot be given faithfully. The system relies on
// refusal: a designer's mistake must come back.

#include <stdexcept>
#include <string>
#include <string_view>

#include "tsql/position.h"

namespace tarlo::tsql {

enum class Refusal {
  Syntax,       // the text is not a statement: says what was expected and what was found
  Limit,        // longer, deeper or with more items than the limits of limits.h
  Name,         // unknown or ambiguous table, column, function or procedure
  Kind,         // operand of a wrong kind, literal that does not convert
  Rule,         // grouping, DISTINCT, UNION and the like
  Unsupported,  // valid T-SQL that this engine is not given
  Forbidden     // a table or procedure that whoever runs the statement may not touch
};

class StatementError : public std::runtime_error {
 public:
  // `what()` is "line L, column C: message".
  StatementError(Refusal refusal, Position position, std::string_view message);

  Refusal refusal() const { return refusal_; }
  Position position() const { return position_; }
  const std::string& message() const { return message_; }

 private:
  Refusal refusal_;
  Position position_;
  std::string message_;
};

}  // namespace tarlo::tsql
