#include "org/operations.h"

#include <cmath>
#include <string>
#include <string_view>

#include "frame/data.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::org {
namespace {

using variant::spliced;

struct LookUp {
  std::string_view statement;  // the key goes behind it
  std::size_t column;
  std::string_view closing = "";
};

constexpr LookUp kUserName = {"select User_Name From Zembra_User Where  user_ID = ", 0};
constexpr LookUp kRankName = {"select Rank_ID , Rank_name from Zembra_Rank Where Rank_Index = ", 1};
constexpr LookUp kPosition = {
    "select Quarters_ID , Quarters_name from Zembra_Quarters,zembra_user Where user_position = "
    "Quarters_ID and  User_ID = ",
    1};
constexpr LookUp kGroupOfUser = {
    "select Group_ID , Group_name from Zembra_Group,zembra_user Where user_groupID= group_ID and  "
    "User_ID = ",
    0};
constexpr LookUp kGroupNameOfUser = {
    "select Group_ID , Group_name from Zembra_Group,zembra_user Where user_groupID= Group_ID and  "
    "User_ID = ",
    1};
constexpr LookUp kDepartment = {
    "select group_ID  from Zembra_User , Zembra_Group where User_DeptID = group_ID and User_ID = ",
    0};
constexpr LookUp kDepartmentName = {" select Group_Name from Zembra_Group where Group_ID ='", 0,
                                    "'"};
constexpr LookUp kModuleName = {"select Menu_Name  from Zembra_Menu Where Menu_ID = ", 0};

frame::Rows rowsOf(Page& page, const LookUp& lookUp, const Variant& key) {
  return frame::rows(page,
                     std::string(lookUp.statement) + spliced(key) + std::string(lookUp.closing));
}

Variant cellOr(const frame::Rows& rows, const LookUp& lookUp, const Variant& fallback) {
  return rows.empty() ? fallback : rows.front().value(lookUp.column);
}

// Error 13 without a row.
Variant find(Page& page, const LookUp& lookUp, const Variant& key) {
  return rowsOf(page, lookUp, key).front().value(lookUp.column);
}

// A refused statement gives what no row gives.
Variant findOr(Page& page, const LookUp& lookUp, const Variant& key, const Variant& fallback) {
  ErrorState err;
  return cellOr(err.value([&] { return rowsOf(page, lookUp, key); }), lookUp, fallback);
}

bool isAllowed(Page& page, const Variant& name) {
  const std::string sql = " select * from Zembra_Permission where Permission_MenuID=" +
                          spliced(page.session.get("usrICID")) +
                          " And Permission_UserID = " + spliced(page.session.get("usrID")) +
                          " And CharIndex('" + spliced(name) + "'+',',Permission_SubAction) > 0 ";
  return !frame::rows(page, sql).empty();
}

}  // namespace

Variant getUserNameByID(Page& page, const Variant& userid) {
  if (!userid.isNull() && std::abs(variant::toDouble(userid)) == 1) return "系统消息";
  return cellOr(rowsOf(page, kUserName, userid), kUserName, "");
}

Variant getUserRank(Page& page) {
  return find(page, kRankName, page.session.get("usrRank"));
}

Variant getUserPosition(Page& page, const Variant& userid) {
  return find(page, kPosition, userid);
}

Variant getUserDeptID(Page& page, const Variant& userid) {
  return findOr(page, kGroupOfUser, userid, {});
}

Variant getUserDeptName(Page& page, const Variant& userid) {
  return findOr(page, kGroupNameOfUser, userid, "空的");
}

Variant getDeptID(Page& page, const Variant& iID) {
  return find(page, kDepartment, iID);
}

Variant getDeptName(Page& page, const Variant& gID) {
  return findOr(page, kDepartmentName, gID, {});
}

Variant getHeaderTitle(Page& page) {
  return cellOr(rowsOf(page, kModuleName, page.session.get("usrICID")), kModuleName, "Zembra");
}

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
