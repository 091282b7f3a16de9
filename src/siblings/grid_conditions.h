#pragma once
// The conditions that the browser may send back for a grid. They are SQL, so the server takes none
// but those that it wrote into the page itself.

#include <set>
#include <string>
#include <string_view>

#include "siblings/grid_definition.h"

namespace tarlo::siblings {

// A text as it stands between the double quotes of a script string, without the backslashes of the
// string.
std::string unescapedScript(std::string_view text);

// Without blanks at its ends and without a leading AND; "" for none.
std::string_view bareCondition(std::string_view condition);

class GridConditions {
 public:
  // Collects the first argument of each view script that begins with a call of gotoView.
  explicit GridConditions(const GridDefinition& grid);
  // True for "" and for a condition of the page, alone or behind AND.
  bool allows(std::string_view condition) const;

 private:
  std::set<std::string, std::less<>> conditions_;
};

}  // namespace tarlo::siblings
