#pragma once
// Whether the current user (Session("usrID")) holds a named sub-action in the current module
// (Session("usrICID")), asked in four ways. The module's permission row lists names, each followed
// by a comma, and a name is looked for with its comma: "add" is found in "quickadd," too, which is
// deliberate. The name is spliced as it came. All are operations and raise DatabaseError.

#include "frame/page.h"

namespace tarlo::org {

// Write `outPutHtml` when it is allowed; else nothing, or a blank. Empty as result.
Variant allowSubActionTest(Page& page, const Variant& subActionName, const Variant& outPutHtml);
Variant allowSubAction(Page& page, const Variant& subActionName, const Variant& outPutHtml);
// `outPutHtml` or " ".
Variant allowSubActionHTML(Page& page, const Variant& subActionName, const Variant& outPutHtml);
Variant allowSubActionTableList(Page& page, const Variant& subActionName);  // True or False

}  // namespace tarlo::org
