#pragma once
// What the browser side of the components asks the server for. Answers are UTF-8 whatever code page
// the pages are sent in.

#include <string>

#include "frame/page.h"

namespace tarlo::siblings {

// A grid's rows. Each answer is complete: a request that cannot be served gives an error as JSON
// and raises nothing.

// Both read: grid (its key), sort (column from 1, of the shown ones), dir (asc, desc), search, view
// and right (conditions that stand in the page). One page of rows as JSON; also reads: page (from
// 1), reload (1: count anew).
void sendGridRows(Page& page);
// All rows of the view as CSV (RFC 4180, UTF-8 with a byte order mark), sent as they are read.
void sendGridCsv(Page& page);

// The options of a level in a cascade of drop-downs, by the value chosen in the level before.

// Request: table, link (the column that relates the level to the one before), value and text
// columns, condition, parent (the value chosen). Together the first five name a level: one that a
// page of this session has offered, or one of a stored control for users who work with forms; any
// other raises error 70 (permission denied). Offered or stored, the table must be a live one of the
// dictionary and the columns its live fields, or both stand in the short list of the platform's
// own, and the condition must be one that pages use: otherwise the list is empty. Answers with
// [[value, text], ..], at most 5000 of them in the order of the texts. Raises DatabaseError.
void sendCascadeOptions(Page& page);

// What the wizard's script asks for before it saves over a scheme.

// Request: prikeyid. Answers {"stamp":..,"change":..}: see scheme::SchemeState. Raises
// DatabaseError.
void sendSchemeState(Page& page);

// The answer of each of them.
void sendJson(Page& page, const std::string& json);

}  // namespace tarlo::siblings
