#pragma once
// The parts of a statement, without their leading keywords, and their form as a variant: an array
// with bounds 0 to 3, element 0 Empty.

#include <string>
#include <string_view>

#include "variant/variant.h"

namespace tarlo::compile {

struct ClauseSet {
  std::string select;
  std::string from;
  std::string where;  // conditions joined by " and "
};

Variant toVariant(ClauseSet clauses);
// Error 13 when the value is no array, 9 when it has not the four elements.
ClauseSet clauseSet(const Variant& value);

// Removes `suffix` from the end of `text` when it stands there.
void cutSuffix(std::string& text, std::string_view suffix);

}  // namespace tarlo::compile
