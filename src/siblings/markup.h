#pragma once
// Text into the markup and scripts that the sibling components write.

#include <string>
#include <string_view>

namespace tarlo::siblings {

// For the text between tags. Character references stay as they are: values were stored with them,
// and browsers send characters outside the page's code page that way.
std::string cellMarkup(std::string_view text);
void appendCell(std::string& markup, std::string_view text);

// For an attribute in double quotes; the attribute's value is the text exactly.
std::string attributeMarkup(std::string_view text);
void appendAttribute(std::string& markup, std::string_view text);

// A JSON string, quotes included, for a place inside a script element: nothing in it can end the
// element, and characters beyond ASCII are escapes, so that it reads alike in every code page. What
// is no UTF-8 becomes U+FFFD.
void appendScriptString(std::string& script, std::string_view text);

}  // namespace tarlo::siblings
