#pragma once
// A scheme's titles as designers see them.

#include <string>
#include <string_view>
#include <vector>

namespace tarlo::scheme {

// Two titles in each row of a table: the rows' markup; the titles are text. The last row of an odd
// number ends with an empty cell.
std::string titleRows(const std::vector<std::string>& titles);

// The titles that a compiled statement's select list gives, for the eye only: a title or an item
// that holds "," or " as " is split wrongly.
std::vector<std::string> titlesInList(std::string_view statement);

}  // namespace tarlo::scheme
