#pragma once
// The page that a designer starts from: the list of all query schemes.

#include "frame/page.h"

namespace tarlo::scheme {

// Writes the page: head, the script of its buttons, the grid with its two pull-downs of views,
// foot. Schemes that are deleted, that raise alerts or whose directory is gone are not listed.
// Raises what the frame, the grid or the directory statement raises.
void ctrlSearch(Page& page);

}  // namespace tarlo::scheme
