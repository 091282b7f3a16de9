#include "scheme/module_links.h"

#include <vector>

#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/template.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using frame::Template;
using variant::spliced;

std::string currentModule(Page& page) {
  return spliced(page.session.get("usrICID"));
}

struct MenuRow {
  std::string name;
  std::string id;
  std::string description;
  bool isFolder;  // opens nothing itself
};

std::vector<MenuRow> menuRows(Page& page, const std::string& condition) {
  const Variant rows = frame::execSQLRows(
      page,
      "Select Menu_Name, Menu_ID, Menu_Desc, Menu_Href From Zembra_Menu,Zembra_permission Where "
      " permission_UserID = " +
          spliced(page.session.get("usrID")) + condition +
          " And Menu_Name <> ''  Order By Menu_Order");
  std::vector<MenuRow> found;
  if (!rows.isArray()) return found;
  const Array& cells = rows.array();
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    found.push_back({spliced(cells.at(0, row)), spliced(cells.at(1, row)),
                     spliced(cells.at(2, row)),
                     variant::toBoolean(frame::isNothing(page, cells.at(3, row)))});
  }
  return found;
}

// Rows of the pane stand side by side on one line, so the file's last line end goes.
Template rowTemplate(std::string_view file) {
  std::string_view text = embedded::scheme_pages::find(file);
  if (text.ends_with('\n')) text.remove_suffix(1);
  return Template(text);
}

// A folder and its entries. All of them carry the folder's id, by which a click on the folder shows
// and hides them.
std::string folderText(Page& page, const MenuRow& folder) {
  static const Template folderRow = rowTemplate("links_folder.html");
  static const Template entryRow = rowTemplate("links_folder_entry.html");
  std::string text = folderRow.fill(
      {{"id", folder.id}, {"description", folder.description}, {"name", folder.name}});
  const std::string condition =
      " AND Menu_ID = permission_MenuID  AND permission_forbid <> 1 and Menu_ParentID  = " +
      folder.id;
  for (const MenuRow& entry : menuRows(page, condition)) {
    if (entry.isFolder) continue;
    text += entryRow.fill({{"folder", folder.id},
                           {"id", entry.id},
                           {"description", entry.description},
                           {"name", entry.name}});
  }
  return text;
}

std::string entryText(const MenuRow& entry, bool isCurrent) {
  static const Template current = rowTemplate("links_current.html");
  static const Template other = rowTemplate("links_entry.html");
  return (isCurrent ? current : other)
      .fill({{"id", entry.id}, {"description", entry.description}, {"name", entry.name}});
}

}  // namespace

Variant isNotWorkflowChild(Page& page) {
  const std::int16_t module = variant::toInt16(page.session.get("usrICID"));
  const Variant rows = frame::execSQLRows(
      page, "select Menu_ID From Zembra_Menu Where Menu_ID =" + std::to_string(module) +
                " and Menu_ParentID = 204");
  return !rows.isArray();
}

Variant getModuleWorkflow(Page& page) {
  const Variant family = frame::execSQLRows(
      page, "select Menu_AddValue from Zembra_Menu Where Menu_AddType = 1 and   Menu_ID = " +
                currentModule(page));
  if (!family.isArray()) return false;
  const std::int16_t flag = variant::toInt16(family.array().at(0, 0));
  const Variant newest = frame::execSQLRows(
      page, " SELECT  TOP 1 Zembra_ID FROM  Zembra_WorkFlow_Custom wf WHERE       WF_SameFlag =" +
                std::to_string(flag) + " ORDER BY Zembra_ID DESC ");
  return newest.array().at(0, 0);
}

Variant showLinksq(Page& page, const Variant&) {
  const Variant module = page.session.get("usrICID");
  if (!variant::toBoolean(frame::validINT(page, module))) return {};
  const std::string condition =
      " AND Menu_ID = permission_MenuID AND permission_forbid <> 1 and Menu_ParentID In (Select "
      "Menu_ParentID From Zembra_Menu Where Menu_ID = " +
      spliced(module) + ")";
  const std::vector<MenuRow> rows = menuRows(page, condition);
  if (rows.empty()) return {};
  static const Template head(embedded::scheme_pages::find("links_head.html"));
  std::string text = head.fill();
  const std::int32_t current = variant::toInt32(module);
  for (const MenuRow& row : rows) {
    text +=
        row.isFolder ? folderText(page, row) : entryText(row, variant::toInt32(row.id) == current);
  }
  return text + "      </table>";
}

}  // namespace tarlo::scheme
