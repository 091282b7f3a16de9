#pragma once
// The operations of the organisation, as pages and other components call them. All raise
// DatabaseError but for the three that never raise. Ids and names go into the statement as they
// come.

#include "frame/page.h"

namespace tarlo::org {

// --- Who is who, by id. Without a row, those that state no other result raise error 13.

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

// --- Which groups the current user may see. The current user is never known (groups.h), so the
// database refuses their statements and they always raise.

Variant RankLimit(Page& page);   // the rank's index
Variant getGroupID(Page& page);  // the user's own group
// Reads the same and hands the value to nobody: Empty even where the statement runs.
Variant getGroupName(Page& page);
Variant getJoinGroupID(Page& page);    // the further groups, as joinedGroups gives them
Variant getGroupLimitSQL(Page& page);  // the condition, as groupLimit gives it

// --- Ready-made lists for the selection boxes of other components. Values are encoded: in the XML
// for an attribute in double quotes.

// XML options as a text. The first three are limited to what the current user may see.
Variant getZembraGroupList(Page& page, const Variant& gID);                        // groupList
Variant getJoinGroupList(Page& page, const Variant& gID, const Variant& bolLeft);  // joinGroupList
Variant getRankList(Page& page, const Variant& rid);  // the argument is not read
Variant getPosition(Page& page);
Variant getDeptList(Page& page);

// HTML options, written to the page; Empty as result. The row whose id is `uid` or `menuID` is
// selected.
Variant getUserListGroup(Page& page, const Variant& gID, const Variant& uid);
Variant getMenuParentList(Page& page, const Variant& menuID);  // "顶级菜单" first

// Script lines, written to the page: they fill the caller's `topArray`. The icon `id` comes first,
// and again at its own place. Empty as result.
Variant getIconList(Page& page, const Variant& id);

// --- Whether the current user (Session("usrID")) holds a named sub-action in the current module
// (Session("usrICID")). The module's permission row lists names, each followed by a comma, and a
// name is looked for with its comma: "add" is found in "quickadd," too, which is deliberate.

// Write `outPutHtml` when it is allowed; else nothing, or a blank. Empty as result.
Variant allowSubActionTest(Page& page, const Variant& subActionName, const Variant& outPutHtml);
Variant allowSubAction(Page& page, const Variant& subActionName, const Variant& outPutHtml);
// `outPutHtml` or " ".
Variant allowSubActionHTML(Page& page, const Variant& subActionName, const Variant& outPutHtml);
Variant allowSubActionTableList(Page& page, const Variant& subActionName);  // True or False

}  // namespace tarlo::org
