#pragma once
// Who is who: names of users, ranks, positions and departments by id, each read by one statement
// into which the id is spliced as it came. All are operations. Without a row, those that state no
// other result raise error 13; all raise DatabaseError but for the three that say so.

#include "frame/page.h"

namespace tarlo::org {

// The system's sender, whose ids are 1 and -1, has a fixed name and no row. "" without a row; error
// 13 for text that is no number.
Variant getUserNameByID(Page& page, const Variant& userid);
Variant getUserRank(Page& page);  // of the rank Session("usrRank")
Variant getUserPosition(Page& page, const Variant& userid);
Variant getUserDeptID(Page& page, const Variant& userid);    // never raises; Empty without a row
Variant getUserDeptName(Page& page, const Variant& userid);  // never raises; "空的" without a row
Variant getDeptID(Page& page, const Variant& iID);
Variant getDeptName(Page& page, const Variant& gID);  // never raises; Empty without a row
Variant getHeaderTitle(Page& page);  // of the module Session("usrICID"); "Zembra" without a row

}  // namespace tarlo::org
