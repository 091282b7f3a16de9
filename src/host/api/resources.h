#pragma once
// What the API answers of controls and schemes: as JSON, and a page of a control's rows, written
// while it is read.

#include <cstdint>

#include "control/control.h"
#include "frame/page.h"
#include "host/api/json_value.h"
#include "host/site/visit.h"

namespace tarlo::host {

// Runs the control's statement once. Raises DatabaseError.
Json describe(Page& page, const control::Control& control);

// A scheme that is not deleted, with its columns. Throws ApiError 404; raises DatabaseError.
Json describeScheme(Page& page, std::int64_t id);

// Request values:
//   page, size   the page, from 1, and its rows (at most 1000, 50 when not given)
//   sort, desc   a column's number, from 1; desc=1 for descending
//   search       text that any column behind the first holds
//   c1, c2, ...  the value that the column of that number has; values are bound, never spliced
//   level, parent  of a cascade: the level below the first, from 1, and the chosen value above it
// The answer: "columns" (titles, the value or row id first), "rows", "page", "size" and "more",
// whether further rows follow. Throws ApiError for a value that is none of these; raises
// DatabaseError before the first byte goes out.
void answerRows(Visit& visit, const control::Control& control);

}  // namespace tarlo::host
