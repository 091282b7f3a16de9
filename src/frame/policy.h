#pragma once
// Policy rows: six free values under a name, by which an installation is configured.

#include "frame/page.h"

namespace tarlo::frame {

// The values A to F of the policy as a rows table. A policy that is not there gives a table with
// bounds 10 and 1, in which cells 0 to 8 of row 0 hold the number 0 and all others are Empty, so
// callers can read any value of row 0 without asking first. The name goes into the statement
// between single quotes and is not escaped. Raises DatabaseError.
Variant getPolicyRow(Page& page, const Variant& name);

}  // namespace tarlo::frame
