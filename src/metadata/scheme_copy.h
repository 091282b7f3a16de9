#pragma once
// Frozen versions of schemes, and questions about the schemes of a table. All are operations and
// raise DatabaseError. Deleted schemes count.

#include "frame/page.h"

namespace tarlo::metadata {

// The key of the version that is valid: the newest state of the scheme is copied unless a version
// at least as new is there. -1 for an unknown scheme. A quote in a scheme's name or description
// breaks the insert, and raises: only the statement's quotes are doubled.
Variant CopyQuery(Page& page, const Variant& queryid);

// The ids of the schemes over the table, one column; Empty when there are none.
Variant getAllQueryid(Page& page, const Variant& tableid);
Variant DecTableinUse(Page& page, const Variant& tableid);  // whether there are any

}  // namespace tarlo::metadata
