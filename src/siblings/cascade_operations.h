#pragma once
// What the browser side of a cascade of drop-downs asks for: the options of a level, by the value
// chosen in the level before.

#include "frame/page.h"

namespace tarlo::siblings {

// Request: table, link (the column that relates the level to the one before), value and text
// columns, condition, parent (the value chosen). Names come from a page, so they are looked up and
// never run as they come: the table must be a live one of the dictionary and the columns its live
// fields, or both stand in the short list of the platform's own; the condition must be one that
// pages use. Names may be in brackets, a column with its table in front. Answers with
// [[value, text], ..], at most 5000 of them in the order of the texts; an empty list for
// names that are refused. Raises DatabaseError.
void sendCascadeOptions(Page& page);

}  // namespace tarlo::siblings
