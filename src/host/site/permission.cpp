#include "host/site/permission.h"

#include "frame/data.h"
#include "variant/convert.h"

namespace tarlo::host {
namespace {

bool isGranted(Page& page, std::string_view condition) {
  std::string sql =
      "select top 1 Permission_MenuID from Zembra_Permission,Zembra_Menu where Permission_UserID=";
  sql += std::to_string(variant::toInt32(page.session.get("usrID")));
  sql.append(" and permission_forbid <> 1 and Menu_ID=Permission_MenuID").append(condition);
  return frame::execSQLRows(page, sql).isArray();
}

}  // namespace

bool mayOpenAnyModule(Page& page) {
  return isGranted(page, "");
}

bool mayOpenSchemeManager(Page& page) {
  return isGranted(page, " and Menu_Href like '%action=ctrlSearch'");
}

bool mayOpenAnyManager(Page& page) {
  return isGranted(page, " and Menu_Href like '%action=ctrlSearch%'");
}

}  // namespace tarlo::host
