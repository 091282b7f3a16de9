#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/page_text.h"
#include "frame/sibling_calls.h"
#include "scheme/operations.h"
#include "scheme/page_frame.h"
#include "text/pieces.h"

namespace tarlo::scheme {
namespace {

using frame::callMethod;

// The condition at the end is always true: the grid finds by it where the fixed condition ends.
constexpr std::string_view kList =
    "select a.Query_ID as queryid,a.Query_Name as queryname,b.TD_Name as dicname,"
    "ss =  CASE a.Query_System WHEN 0 THEN '用户' WHEN 1 THEN '系统' END,"
    "a.Query_Desc as querydesc,a.Zembra_WriteDate as writedate"
    " from Zembra_Query_Main as a , Zembra_Dict_TableDir as b"
    " where a.Zembra_Flag <> 0 and a.Query_Dic=b.Zembra_ID and Query_IsDataAlert = 0"
    " and ('orvane'='orvane')";

constexpr std::string_view kDirectories =
    "select Zembra_ID , TD_Name from Zembra_Dict_TableDir where Zembra_Flag <> 0";

// Pull-downs of views: by kind of scheme, and by directory.
constexpr std::string_view kKindViews = "view1";
constexpr std::string_view kDirectoryViews = "view2";

std::string viewScript(std::string_view condition, std::string_view name) {
  return frame::gridViewScript(" " + std::string(condition) + " ",
                               "视图:<b>[" + std::string(name) + "]</b>");
}

std::shared_ptr<Object> makeGrid(Page& page) {
  auto grid = page.server.createObject("TarloTable.table");
  frame::connectToPage(page, *grid, frame::kGridContext);
  grid->put("id", "SearchTable");
  grid->put("SelectionStyle", 2);
  grid->put("title", "查询方案|目录|类别|方案说明|创建时间");
  grid->put("sql", kList);
  grid->put("Pagesize", 15);
  grid->put("Width", "95%");
  grid->put("showButton", true);
  grid->put("Search", true);
  grid->put("orderBy", " a.Zembra_WriteDate DESC");
  callMethod(*grid, "AddSubMenuTitle", {"视图:功能分类", kKindViews});
  callMethod(*grid, "AddSubMenuTitle", {"视图:目录分类", kDirectoryViews});
  return grid;
}

void addSeparator(Object& grid, std::string_view menu) {
  callMethod(grid, "AddSubMenu", {"", "", menu});
}

void addKindViews(Object& grid) {
  callMethod(grid, "AddSubMenu",
             {"按<b>[全部类型]</b>查看", viewScript("1 = 1", "全部类型"), kKindViews});
  addSeparator(grid, kKindViews);
  callMethod(grid, "AddSubMenu",
             {"按<b>[系统类型]</b>查看", viewScript("a.Query_System = 1", "系统类型"), kKindViews});
  callMethod(grid, "AddSubMenu",
             {"按<b>[用户类型]</b>查看", viewScript("a.Query_System = 0", "用户类型"), kKindViews});
}

void addButtons(Object& grid) {
  const auto add = [&](std::string_view tip, std::string_view caption, std::string_view script) {
    callMethod(grid, "addActions", {tip, caption, script, "btnX"});
  };
  add("新增查询方案", "新增...", "addRecord()");
  add("修改查询方案", "修改...", "modiRecord()");
  add("预览查询方案", "预览...", "ShowDetail()");
  add("删除查询方案", "删除...", "delRecord()");
}

void addDirectoryViews(Page& page, Object& grid) {
  callMethod(
      grid, "AddSubMenu",
      {"在<b>[全部查询方案]</b>目录下查看", viewScript("1 = 1", "全部类型"), kDirectoryViews});
  addSeparator(grid, kDirectoryViews);
  for (frame::Row row : frame::rows(page, kDirectories)) {
    const std::string name = row.text(1);
    const std::string caption = "在<b>[" + std::string(text::trim(name)) + "]</b>目录下查看";
    const std::string condition = "b.Zembra_ID =" + row.text(0);
    callMethod(grid, "AddSubMenu",
               {caption, viewScript(condition, name + "目录"), kDirectoryViews});
  }
}

}  // namespace

void ctrlSearch(Page& page) {
  static const frame::PageText script(embedded::scheme_pages::find("ctrl_search.html"));
  writePageHead(page, "查询方案自定义");
  script.write(page.response);
  {
    const std::shared_ptr<Object> grid = makeGrid(page);
    addKindViews(*grid);
    grid->put("onRowDoubleClick", "ShowDetail()");
    addButtons(*grid);
    addDirectoryViews(page, *grid);
    callMethod(*grid, "WriteTable");
  }
  writePageFoot(page);
}

}  // namespace tarlo::scheme
