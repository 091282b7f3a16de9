#pragma once
// What the browser side of a grid asks for. Each answer is complete: a request that cannot be
// served gives an error as JSON and raises nothing.

#include "frame/page.h"

namespace tarlo::siblings {

// Both read: grid (its key), sort (column from 1, of the shown ones), dir (asc, desc), search, view
// and right (conditions that stand in the page). One page of rows as JSON; also reads: page (from
// 1), reload (1: count anew).
void sendGridRows(Page& page);
// All rows of the view as CSV (RFC 4180, UTF-8 with a byte order mark), sent as they are read.
void sendGridCsv(Page& page);

}  // namespace tarlo::siblings
