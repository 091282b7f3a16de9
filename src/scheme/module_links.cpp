#include "scheme/module_links.h"

#include <vector>

#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/page_text.h"
#include "scheme/operations.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using frame::PageText;
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
  std::vector<MenuRow> found;
  for (frame::Row row : frame::rows(page,
                                    "Select Menu_Name, Menu_ID, Menu_Desc, Menu_Href From "
                                    "Zembra_Menu,Zembra_permission Where "
                                    " permission_UserID = " +
                                        spliced(page.session.get("usrID")) + condition +
                                        " And Menu_Name <> ''  Order By Menu_Order")) {
    found.push_back({row.text(0), row.text(1), row.text(2), row.text(3).empty()});
  }
  return found;
}

// Rows of the pane stand side by side on one line, so the file's last line end goes.
PageText rowTemplate(std::string_view file) {
  std::string_view text = embedded::scheme_pages::find(file);
  if (text.ends_with('\n')) text.remove_suffix(1);
  return PageText(text);
}

// A folder and its entries. All of them carry the folder's id, by which a click on the folder shows
// and hides them.
std::string folderText(Page& page, const MenuRow& folder) {
  static const PageText folderRow = rowTemplate("links_folder.html");
  static const PageText entryRow = rowTemplate("links_folder_entry.html");
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
  static const PageText current = rowTemplate("links_current.html");
  static const PageText other = rowTemplate("links_entry.html");
  return (isCurrent ? current : other)
      .fill({{"id", entry.id}, {"description", entry.description}, {"name", entry.name}});
}

// Nothing when the module starts none.
std::optional<Variant> newestWorkflow(Page& page) {
  const frame::Rows family = frame::rows(
      page, "select Menu_AddValue from Zembra_Menu Where Menu_AddType = 1 and   Menu_ID = " +
                currentModule(page));
  if (family.empty()) return std::nullopt;
  const std::int16_t flag = variant::toInt16(family.front().value(0));
  const frame::Rows newest = frame::rows(
      page, " SELECT  TOP 1 Zembra_ID FROM  Zembra_WorkFlow_Custom wf WHERE       WF_SameFlag =" +
                std::to_string(flag) + " ORDER BY Zembra_ID DESC ");
  return newest.front().value(0);
}

}  // namespace

bool isWorkflowChild(Page& page) {
  const std::int16_t module = variant::toInt16(page.session.get("usrICID"));
  return !frame::rows(page, "select Menu_ID From Zembra_Menu Where Menu_ID =" +
                                std::to_string(module) + " and Menu_ParentID = 204")
              .empty();
}

std::optional<std::string> moduleWorkflow(Page& page) {
  const auto workflow = newestWorkflow(page);
  if (!workflow) return std::nullopt;
  return spliced(*workflow);
}

std::string neighbourLinks(Page& page) {
  const Variant module = page.session.get("usrICID");
  if (!frame::isWholeNumber(module)) return "";
  const std::string condition =
      " AND Menu_ID = permission_MenuID AND permission_forbid <> 1 and Menu_ParentID In (Select "
      "Menu_ParentID From Zembra_Menu Where Menu_ID = " +
      spliced(module) + ")";
  const std::vector<MenuRow> rows = menuRows(page, condition);
  if (rows.empty()) return "";
  static const PageText head(embedded::scheme_pages::find("links_head.html"));
  std::string text = head.fill();
  const std::int32_t current = variant::toInt32(module);
  for (const MenuRow& row : rows) {
    text +=
        row.isFolder ? folderText(page, row) : entryText(row, variant::toInt32(row.id) == current);
  }
  return text + "      </table>";
}

Variant isNotWorkflowChild(Page& page) {
  return !isWorkflowChild(page);
}

Variant getModuleWorkflow(Page& page) {
  return newestWorkflow(page).value_or(Variant(false));
}

Variant showLinksq(Page& page, const Variant&) {
  std::string links = neighbourLinks(page);
  return links.empty() ? Variant() : Variant(std::move(links));
}

}  // namespace tarlo::scheme
