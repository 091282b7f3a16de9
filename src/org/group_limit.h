#pragma once
// Which groups the current user may see. The operations ask for the current user, who is never
// known (current_user.h), so the database refuses their statements and they raise DatabaseError;
// the rules behind them stand beside them as functions of plain values.

#include <string>
#include <string_view>

#include "frame/page.h"

namespace tarlo::org {

Variant RankLimit(Page& page);   // the rank's index
Variant getGroupID(Page& page);  // the user's own group
// Reads the same and hands the value to nobody: Empty even where the statement runs.
Variant getGroupName(Page& page);
Variant getJoinGroupID(Page& page);    // the further groups, as joinedGroups gives them
Variant getGroupLimitSQL(Page& page);  // the condition, as groupLimit gives it

// A list of group ids that can stand in an IN list: trimmed, "," alone is "0", and a comma at the
// end gets a "0" behind it.
std::string joinedGroups(std::string_view stored);
// The condition on Group_ID by the rank's index: 1 no group, 2 the own one, 3 the own and the
// joined ones, 4 "" for all; any other gives Empty, which adds nothing either.
Variant groupLimit(const Variant& rank, const Variant& group, const Variant& joined);

}  // namespace tarlo::org
