#pragma once
// Ready-made lists of groups, ranks, positions, users, menus and icons for the selection boxes of
// other components. Three shapes: XML options as a text, HTML options written to the page, script
// lines written to the page. Values are encoded: in the XML for an attribute in double quotes. All
// are operations and raise DatabaseError; those limited to what the current user may see always do
// (group_limit.h).

#include "frame/page.h"

namespace tarlo::org {

// XML. "所有部门" stands first unless gID is "noall".
Variant getZembraGroupList(Page& page, const Variant& gID);
// The groups in (`bolLeft` True) or outside of the list `gID`, each id of it followed by a comma.
// The test is by position, so 3 counts as in "13,". Without rows the root is not closed:
// deliberate, only this list's callers meet it.
Variant getJoinGroupList(Page& page, const Variant& gID, const Variant& bolLeft);
// Both for a condition on Group_ID that the caller knows.
Variant groupList(Page& page, const Variant& limit, const Variant& gID);
Variant joinGroupList(Page& page, const Variant& limit, const Variant& gID, const Variant& bolLeft);

Variant getRankList(Page& page, const Variant& rid);  // the argument is not read
Variant getPosition(Page& page);
Variant getDeptList(Page& page);

// HTML, Empty as result. The row whose id is `uid` or `menuID` is selected.
Variant getUserListGroup(Page& page, const Variant& gID, const Variant& uid);
Variant getMenuParentList(Page& page, const Variant& menuID);  // "顶级菜单" first

// Script: fills the caller's `topArray`. The icon `id` comes first, and again at its own place.
// Empty as result.
Variant getIconList(Page& page, const Variant& id);

}  // namespace tarlo::org
