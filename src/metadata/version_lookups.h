#pragma once
// Finding the frozen version of a control scheme.

#include "frame/page.h"

namespace tarlo::metadata {

// Key of the version row of control scheme `qfid` under scheme version `queryid`, -1 when there is
// none. Raises DatabaseError.
Variant verID2ZembraID(Page& page, const Variant& qfid, const Variant& queryid);

}  // namespace tarlo::metadata
