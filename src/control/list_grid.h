#pragma once
// The grid that shows what a list control looks like: its columns, and rows if the statement gives
// any.

#include <string>

#include "frame/page.h"

namespace tarlo::control {

// The grid's markup. `titles` are joined by "|". Raises what the grid raises.
Variant listGrid(Page& page, const std::string& sql, const std::string& titles,
                 std::string_view width);

// A grid of a wizard's frame, to choose one row from: id "SearchTable", no menu, set up but for
// what the caller sets.
std::shared_ptr<Object> choiceGrid(Page& page, std::string_view title, const std::string& sql,
                                   int pageSize);

}  // namespace tarlo::control
