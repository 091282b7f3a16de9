#include <string>

#include "embedded_org_pages.h"
#include "frame/data.h"
#include "frame/page_text.h"
#include "frame/place.h"
#include "org/groups.h"
#include "org/operations.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/text.h"

namespace tarlo::org {
namespace {

using frame::inPlace;
using frame::Place;
using variant::spliced;

constexpr std::string_view kRoot = "<?xml version='1.0' encoding='gb2312'?><root>";
constexpr std::string_view kRootEnd = "</root>";

std::string xmlOption(std::string_view id, std::string_view name) {
  return "<option><value>" + inPlace(Place::Encoded, id) + "</value><text>" +
         inPlace(Place::Encoded, name) + "</text></option>";
}

std::string xmlOptions(const frame::Rows& rows) {
  std::string options;
  for (const frame::Row row : rows) options += xmlOption(row.text(0), row.text(1));
  return options;
}

std::string xmlList(std::string_view options) {
  return std::string(kRoot).append(options).append(kRootEnd);
}

Variant xmlListOf(Page& page, std::string_view sql) {
  return Variant(xmlList(xmlOptions(frame::rows(page, sql))));
}

void writeHtmlOptions(Page& page, std::string_view sql, const Variant& selected) {
  for (const frame::Row row : frame::rows(page, sql)) {
    page.response.write(variant::equals(row.value(0), selected) ? "<option selected value="
                                                                : "<option value=");
    page.response.write(inPlace(Place::Bare, row.text(0)) + ">" +
                        inPlace(Place::Encoded, row.text(1)) + "</option>");
  }
}

bool isListed(const Variant& list, const std::string& key) {
  return variant::inStr(spliced(list), key) > 0;
}

// Of a list that is not there every group is outside.
bool belongs(const Variant& list, const std::string& key, bool inside) {
  if (inside) return !list.isNull() && isListed(list, key);
  return list.isNull() || !isListed(list, key);
}

}  // namespace

std::string groupList(Page& page, std::string_view limit, const Variant& gID) {
  const std::string sql = "select Group_ID , Group_name,Group_Type from Zembra_Group  where 1=1 " +
                          std::string(limit) + " order by Group_Type";
  const std::string all = variant::equals(gID, "noall") ? "" : xmlOption("-1", "所有部门");
  return xmlList(all + xmlOptions(frame::rows(page, sql)));
}

std::string joinGroupList(Page& page, std::string_view limit, const Variant& gID,
                          const Variant& bolLeft) {
  const bool inside = variant::equals(bolLeft, true);
  const frame::Rows rows = frame::rows(
      page, "select Group_ID , Group_name from Zembra_Group Where 1=1 " + std::string(limit));
  std::string options;
  for (const frame::Row row : rows) {
    if (!belongs(gID, row.text(0) + ",", inside)) continue;
    options += xmlOption(row.text(0), row.text(1));
  }
  return rows.empty() ? std::string(kRoot) : xmlList(options);
}

Variant getZembraGroupList(Page& page, const Variant& gID) {
  return Variant(groupList(page, currentGroupLimit(page), gID));
}

Variant getJoinGroupList(Page& page, const Variant& gID, const Variant& bolLeft) {
  return Variant(joinGroupList(page, currentGroupLimit(page), gID, bolLeft));
}

Variant getRankList(Page& page, const Variant&) {
  return xmlListOf(page, "select Rank_ID , Rank_name from Zembra_Rank Where Rank_Index < = " +
                             spliced(currentRank(page)) + "  order by Rank_Index  ");
}

Variant getPosition(Page& page) {
  return xmlListOf(page, "select Quarters_ID , Quarters_name from Zembra_Quarters  ");
}

Variant getDeptList(Page& page) {
  return xmlListOf(page, "select Group_ID , Group_name from Zembra_Group Where Group_Type=0 ");
}

Variant getUserListGroup(Page& page, const Variant& gID, const Variant& uid) {
  writeHtmlOptions(
      page, "select User_ID , User_user from Zembra_User  where User_GroupID = " + spliced(gID),
      uid);
  return {};
}

Variant getMenuParentList(Page& page, const Variant& menuID) {
  page.response.write("<option value=0>顶级菜单</option>");
  writeHtmlOptions(page,
                   "select Menu_ID , Menu_name from Zembra_Menu where Menu_name is not null and "
                   "Menu_Href is null  ",
                   menuID);
  return {};
}

Variant getIconList(Page& page, const Variant& id) {
  static const frame::PageText line(embedded::org_pages::find("icon_option.js"));
  const std::string columns = "select Icon_ID , icon_name ,icon_file  from Zembra_ICON ";
  const std::string sql =
      columns + "Where Icon_ID = " + spliced(id) + "   union all " + columns + " ";
  int index = 0;
  for (const frame::Row row : frame::rows(page, sql)) {
    line.write(page.response, {{"index", std::to_string(index++)},
                               {"id", row.text(0)},
                               {"name", row.text(1)},
                               {"file", row.text(2)}});
  }
  return {};
}

}  // namespace tarlo::org
