#pragma once
// Text into the markup and scripts that the sibling components write.

#include <string>
#include <string_view>

namespace tarlo::siblings {

// For the text between tags. Character references stay as they are: values were stored with them,
// and browsers send characters outside the page's code page that way.
std::string cellMarkup(std::string_view text);

// For an attribute in double quotes; the attribute's value is the text exactly.
std::string attributeMarkup(std::string_view text);

// JSON text for a place inside a script element: nothing in it can end the element.
std::string scriptSafe(std::string json);

}  // namespace tarlo::siblings
