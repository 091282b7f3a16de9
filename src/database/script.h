#pragma once
// Scripts: batches parted by lines that hold only GO.

#include <cstddef>
#include <string_view>
#include <vector>

#include "database/connection.h"

namespace tarlo::database {

struct ScriptBatch {
  std::string_view text;
  std::size_t firstLine = 1;  // line of the script on which the text begins
};

// The batches in order, empty ones left out. GO may have blanks round it and any case.
std::vector<ScriptBatch> splitScript(std::string_view script);

// Runs the batches in order; the first refused one raises its DatabaseError with "line N: " (a line
// of the script) in front of the description.
void runScript(Connection& connection, std::string_view script);

}  // namespace tarlo::database
