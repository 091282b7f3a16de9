#include "org/option_lists.h"

#include <string>

#include "embedded_org_pages.h"
#include "frame/data.h"
#include "frame/place.h"
#include "frame/template.h"
#include "org/group_limit.h"
#include "variant/array.h"
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

std::string asText(const Variant& cell) {
  return inPlace(Place::Encoded, spliced(cell));
}

std::string xmlOption(const Variant& id, const Variant& name) {
  return "<option><value>" + asText(id) + "</value><text>" + asText(name) + "</text></option>";
}

// Calls `row(cells, index)` for each row of the statement's result.
template <class Row>
void forEachRow(Page& page, const std::string& sql, Row&& row) {
  const Variant rows = frame::execSQLRows(page, Variant(sql));
  if (!rows.isArray()) return;
  const Array& cells = rows.array();
  for (std::ptrdiff_t i = 0; i <= cells.upperBound(2); ++i) row(cells, i);
}

std::string xmlOptions(Page& page, const std::string& sql) {
  std::string options;
  forEachRow(page, sql, [&](const Array& cells, std::ptrdiff_t row) {
    options += xmlOption(cells.at(0, row), cells.at(1, row));
  });
  return options;
}

Variant xmlList(std::string_view options) {
  return Variant(std::string(kRoot).append(options).append(kRootEnd));
}

void writeHtmlOptions(Page& page, const std::string& sql, const Variant& selected) {
  forEachRow(page, sql, [&](const Array& cells, std::ptrdiff_t row) {
    const Variant& id = cells.at(0, row);
    page.response.write(variant::equals(id, selected) ? "<option selected value="
                                                      : "<option value=");
    page.response.write(inPlace(Place::Bare, spliced(id)) + ">" + asText(cells.at(1, row)) +
                        "</option>");
  });
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

Variant getZembraGroupList(Page& page, const Variant& gID) {
  return groupList(page, getGroupLimitSQL(page), gID);
}

Variant groupList(Page& page, const Variant& limit, const Variant& gID) {
  const std::string sql = "select Group_ID , Group_name,Group_Type from Zembra_Group  where 1=1 " +
                          spliced(limit) + " order by Group_Type";
  const std::string all = variant::equals(gID, "noall") ? "" : xmlOption(-1, "所有部门");
  return xmlList(all + xmlOptions(page, sql));
}

Variant getJoinGroupList(Page& page, const Variant& gID, const Variant& bolLeft) {
  return joinGroupList(page, getGroupLimitSQL(page), gID, bolLeft);
}

Variant joinGroupList(Page& page, const Variant& limit, const Variant& gID,
                      const Variant& bolLeft) {
  const std::string sql =
      "select Group_ID , Group_name from Zembra_Group Where 1=1 " + spliced(limit);
  const bool inside = variant::equals(bolLeft, true);
  bool hasRows = false;
  std::string options;
  forEachRow(page, sql, [&](const Array& cells, std::ptrdiff_t row) {
    hasRows = true;
    if (belongs(gID, spliced(cells.at(0, row)) + ",", inside)) {
      options += xmlOption(cells.at(0, row), cells.at(1, row));
    }
  });
  return hasRows ? xmlList(options) : Variant(kRoot);
}

Variant getRankList(Page& page, const Variant&) {
  return xmlList(
      xmlOptions(page, "select Rank_ID , Rank_name from Zembra_Rank Where Rank_Index < = " +
                           spliced(RankLimit(page)) + "  order by Rank_Index  "));
}

Variant getPosition(Page& page) {
  return xmlList(xmlOptions(page, "select Quarters_ID , Quarters_name from Zembra_Quarters  "));
}

Variant getDeptList(Page& page) {
  return xmlList(
      xmlOptions(page, "select Group_ID , Group_name from Zembra_Group Where Group_Type=0 "));
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
  static const frame::Template line(embedded::org_pages::find("icon_option.js"));
  const std::string columns = "select Icon_ID , icon_name ,icon_file  from Zembra_ICON ";
  const std::string sql =
      columns + "Where Icon_ID = " + spliced(id) + "   union all " + columns + " ";
  forEachRow(page, sql, [&](const Array& cells, std::ptrdiff_t row) {
    line.write(page.response, {{"index", std::to_string(row)},
                               {"id", spliced(cells.at(0, row))},
                               {"name", spliced(cells.at(1, row))},
                               {"file", spliced(cells.at(2, row))}});
  });
  return {};
}

}  // namespace tarlo::org
