#include "org/sub_actions.h"

#include <string>

#include "frame/data.h"
#include "variant/convert.h"

namespace tarlo::org {
namespace {

using variant::spliced;

bool isAllowed(Page& page, const Variant& name) {
  const std::string sql = " select * from Zembra_Permission where Permission_MenuID=" +
                          spliced(page.session.get("usrICID")) +
                          " And Permission_UserID = " + spliced(page.session.get("usrID")) +
                          " And CharIndex('" + spliced(name) + "'+',',Permission_SubAction) > 0 ";
  return frame::execSQLRows(page, Variant(sql)).isArray();
}

}  // namespace

Variant allowSubActionTest(Page& page, const Variant& subActionName, const Variant& outPutHtml) {
  if (isAllowed(page, subActionName)) page.response.write(spliced(outPutHtml));
  return {};
}

Variant allowSubAction(Page& page, const Variant& subActionName, const Variant& outPutHtml) {
  page.response.write(isAllowed(page, subActionName) ? spliced(outPutHtml) : " ");
  return {};
}

Variant allowSubActionHTML(Page& page, const Variant& subActionName, const Variant& outPutHtml) {
  return isAllowed(page, subActionName) ? outPutHtml : Variant(" ");
}

Variant allowSubActionTableList(Page& page, const Variant& subActionName) {
  return isAllowed(page, subActionName);
}

}  // namespace tarlo::org
