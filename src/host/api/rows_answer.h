#pragma once
// A page of a control's rows, written while it is read.

#include "control/control.h"
#include "host/site/visit.h"

namespace tarlo::host {

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
