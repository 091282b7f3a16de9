#pragma once
// Why a statement would be refused, as kinds that a page can put into words: the texts of the front
// end and of the engine stay in the log.

#include <cstddef>
#include <string_view>

#include "database/connection.h"

namespace tarlo::database {

enum class Fault {
  None,
  Syntax,       // the text is no statement
  Limit,        // too long, deep or with too many items
  Name,         // an unknown or ambiguous table, column or function
  Kind,         // values of kinds that do not go together
  Rule,         // grouping, statistics and the like
  Unsupported,  // a construct that the engine is not given
  Forbidden,    // a table that the statement may not touch
  Running,      // the engine refuses it, at the latest at its first row
  Time          // it took too long
};

struct StatementCheck {
  Fault fault = Fault::None;
  std::size_t offset = 0;  // in the text, in bytes; 0 for faults of the engine
};

// What the front end says, without running anything.
StatementCheck checkText(Connection& connection, std::string_view sql);
// The same, then a run up to the first row.
StatementCheck checkRun(Connection& connection, std::string_view sql);

}  // namespace tarlo::database
