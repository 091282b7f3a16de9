#pragma once
// The preview: what passes it can be saved.

#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"

namespace tarlo::scheme {

// Compiles the posted definition, runs the statement once and writes a page: the titles of the
// result, or the refusal, which also disables the wizard's Next. Never raises.
void previewSearchdlg(Page& page);

// The titles that a compiled statement's select list gives, for the eye only: a title or an item
// that holds "," or " as " is split wrongly.
std::vector<std::string> titlesInList(std::string_view statement);

}  // namespace tarlo::scheme
