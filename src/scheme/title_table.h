#pragma once
// A scheme's titles, two in each row of a table.

#include <string>
#include <vector>

namespace tarlo::scheme {

// The rows' markup; the titles are text. The last row of an odd number ends with an empty
// cell.
std::string titleRows(const std::vector<std::string>& titles);

}  // namespace tarlo::scheme
