#pragma once
// Procedures by name, for engines that have none of their own.

#include <map>
#include <string>

#include "database/connection.h"
#include "text/fold.h"

namespace tarlo::database {

struct ProcedureTable {
  std::map<std::string, Procedure> byFoldedName;  // keys: text::foldedName
};

}  // namespace tarlo::database
