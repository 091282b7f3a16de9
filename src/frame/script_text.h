#pragma once
// Text from outside into the scripts of pages.

#include <string>
#include <string_view>

namespace tarlo::frame {

// For the inside of a script string in quotes of either kind: nothing in it can end the string, the
// line or the script element. Plain text stays as it is.
std::string scriptText(std::string_view text);

}  // namespace tarlo::frame
