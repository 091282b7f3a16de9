#pragma once
// Putting look-up statements together: the pieces side by side, in one allocation.

#include <initializer_list>
#include <string>
#include <string_view>

#include "frame/page.h"

namespace tarlo::metadata {

std::string joined(std::initializer_list<std::string_view> pieces);

// The rows of a statement, Null when it gives none. Raises DatabaseError.
Variant rowsOrNull(Page& page, std::string statement);

}  // namespace tarlo::metadata
