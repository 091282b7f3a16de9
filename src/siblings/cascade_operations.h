#pragma once
// What the browser side of a cascade of drop-downs asks for: the options of a level, by the value
// chosen in the level before.

#include "frame/page.h"

namespace tarlo::siblings {

// Request: table, link (the column that relates the level to the one before), value and text
// columns, condition, parent (the value chosen). Together the first five name a level: one that a
// page of this session has offered, or one of a stored control for users who work with forms; any
// other raises error 70 (permission denied). Offered or stored, the table must be a live one of the
// dictionary and the columns its live fields, or both stand in the short list of the platform's
// own, and the condition must be one that pages use: otherwise the list is empty. Answers with
// [[value, text], ..], at most 5000 of them in the order of the texts. Raises DatabaseError.
void sendCascadeOptions(Page& page);

}  // namespace tarlo::siblings
