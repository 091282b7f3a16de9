#pragma once
// Drawing a grid into a page: its statement is prepared and kept in the session, its first page is
// read, and the statement is noted where task panels look for what a session has listed last.

#include <string>

#include "frame/page.h"
#include "siblings/grid_definition.h"

namespace tarlo::siblings {

// The grid's markup. Captions that the page did not give are the titles of the statement.
std::string drawGrid(Page& page, GridDefinition grid);

}  // namespace tarlo::siblings
