// The manager pages and their deletes.

#include <span>

#include "control/control_store.h"
#include "control/operations.h"
#include "control/posted_control.h"
#include "embedded_control_pages.h"
#include "frame/page_text.h"
#include "frame/sibling_calls.h"
#include "scheme/page_frame.h"

namespace tarlo::control {
namespace {

using frame::callMethod;
using frame::gridViewScript;
using frame::PageText;

struct View {
  std::string_view name;  // "" for a separator
  std::string_view condition;
};

struct Button {
  std::string_view tip;
  std::string_view caption;
  std::string_view script;
};

// What tells the two pages apart.
struct Manager {
  std::string_view title;
  std::string_view deleteOperation;
  std::string_view showOperation;
  std::string_view columns;
  std::string_view condition;
  std::string_view captions;
  std::string_view orderBy;
  bool hasMenu;  // whether the page sets it; templates leave it to the grid
  std::span<const View> views;
  std::span<const Button> buttons;
};

constexpr std::string_view kView = "view1";

constexpr View kViews[] = {{"全部类别", " 1 = 1 "},
                           {"", ""},
                           {"下拉框控件类别", " b.QF_Type_ID = 1 "},
                           {"级联框控件类别", " b.QF_Type_ID = 2 "},
                           {"列表框控件类别", " b.QF_Type_ID = 3 "}};

constexpr Button kButtons[] = {{"模板绑定", "模板绑定", "addModel()"},
                               {"新增控件关系", "新增...", "addRecord()"},
                               {"预览控件关系", "预览...", "ShowDetail()"},
                               {"删除控件关系", "删除...", "delRecord()"}};

// Templates have no lists, and nothing is bound to them.
constexpr std::span<const View> kTemplateViews = std::span(kViews).first(4);
constexpr std::span<const Button> kTemplateButtons = std::span(kButtons).subspan(1);

constexpr Manager kUserManager = {
    "用户控件方案自定义",
    "delSearch_UsrField",
    "showSearchDlg_UsrField",
    "c.Query_Name as [查询方案]",
    " and a.QF_System = 0 and a.Zembra_Flag <> 0",
    "关系名称|类型|查询方案",
    "a.Zembra_CreateDate DESC",
    true,
    kViews,
    kButtons,
};

constexpr Manager kTemplateManager = {
    "模板控件方案自定义",
    "delSearch_sysField",
    "showSearchDlg_sysfield",
    "c.Query_Name as [查询方案],a.Zembra_ModiDate as [创建时间]",
    " and a.Zembra_Flag <> 0 and a.QF_System = 1",
    "关系名称|类型|查询方案|创建时间",
    "a.Zembra_ModiDate DESC",
    false,
    kTemplateViews,
    kTemplateButtons,
};

// The condition at the end is always true: the grid finds by it where the fixed condition ends.
std::string listStatement(const Manager& manager) {
  std::string sql =
      "select a.QF_ID as [标识列],a.QF_Name as [关系名称],b.QF_Type_Name as [控件类型],";
  sql.append(manager.columns);
  sql.append(
      " from Zembra_Query_Field as a,Zembra_Query_Type as b ,Zembra_Query_Main as c"
      " where a.QF_FieldType = b.QF_Type_ID and a.QF_NameID = c.Query_ID");
  return sql.append(manager.condition).append(" and ('orvane'='orvane')");
}

void addViews(Object& grid, std::span<const View> views) {
  callMethod(grid, "AddSubMenuTitle", {"视图：功能分类", kView});
  for (const View& view : views) {
    if (view.name.empty()) {
      callMethod(grid, "AddSubMenu", {"", "", kView});
      continue;
    }
    const std::string name = "<b>[" + std::string(view.name) + "]</b>";
    callMethod(grid, "AddSubMenu",
               {"按" + name + "查看", gridViewScript(view.condition, "视图：" + name), kView});
  }
}

// `adding` is the script of the functions that add.
void writeManager(Page& page, const Manager& manager, const PageText& adding) {
  static const PageText script(embedded::control_pages::find("manager.html"));
  scheme::writePageHead(page, manager.title);
  script.write(page.response, {{"delete", manager.deleteOperation},
                               {"show", manager.showOperation},
                               {"adding", adding.fill()}});
  const auto grid = page.server.createObject("TarloTable.table");
  frame::connectToPage(page, *grid, frame::kGridContext);
  grid->put("id", "SearchTable");
  grid->put("SelectionStyle", 2);
  grid->put("title", manager.captions);
  grid->put("sql", listStatement(manager));
  grid->put("Pagesize", 15);
  grid->put("Width", "95%");
  if (manager.hasMenu) grid->put("showMenu", true);
  grid->put("showButton", true);
  addViews(*grid, manager.views);
  grid->put("Search", true);
  grid->put("orderBy", manager.orderBy);
  grid->put("onRowDoubleClick", "ShowDetail()");
  for (const Button& button : manager.buttons) {
    callMethod(*grid, "addActions", {button.tip, button.caption, button.script, "btnX"});
  }
  callMethod(*grid, "WriteTable");
  scheme::writePageFoot(page);
}

constexpr std::string_view kDeleted =
    "<script>top.sAlert('此控件关系已经从系统中删除！',false);parent.SearchTable.reload();"
    "</script>";
constexpr std::string_view kNotDeleted = "<script>top.sAlert('删除控件关系出错！');</script>";

bool deleteControls(Page& page) {
  std::string sql =
      "update Zembra_Query_Field set Zembra_Flag=0 where QF_ID in (" + posted(page, "ID") + ")";
  return runsLogged(page, sql);
}

}  // namespace

void ctrlSearch_Usrfield(Page& page) {
  static const PageText adding(embedded::control_pages::find("manager_user.js"));
  writeManager(page, kUserManager, adding);
}

void ctrlSearch_Sysfield(Page& page) {
  static const PageText adding(embedded::control_pages::find("manager_template.js"));
  writeManager(page, kTemplateManager, adding);
}

void delSearch_UsrField(Page& page) {
  deleteControls(page);
  page.response.write(kDeleted);
}

void delSearch_sysField(Page& page) {
  page.response.write(deleteControls(page) ? kDeleted : kNotDeleted);
}

}  // namespace tarlo::control
