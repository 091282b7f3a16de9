#pragma once
// Keeping stored statements true to the dictionary: definitions hold ids, statements hold names, so
// a change of the dictionary asks for the statements to be compiled again.

#include "frame/page.h"

namespace tarlo::compile {

// Compiles every scheme over the table again, deleted ones included, runs the statement once, and
// stores it with a new modification date. A scheme whose statement fails keeps the one it has.
// Never raises. The result is the outcome of the last scheme alone, False when there is none.
// Control schemes are left as they are.
Variant UpdateQuery(Page& page, const Variant& tableid);

}  // namespace tarlo::compile
