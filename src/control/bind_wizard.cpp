// The wizard that binds a template: its dialog and its two lists.

#include "control/operations.h"
#include "control/posted_control.h"
#include "control/wizard_parts.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/page_text.h"
#include "frame/sibling_calls.h"
#include "metadata/dictionary.h"
#include "metadata/stored_schemes.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using frame::PageText;

// The blank at its end is part of the text.
constexpr std::string_view kFirstList =
    "function doFirstStep(){frametest.location='/TarloQuery.Zembra?action="
    "addSearchDlg_UsrModel1_1';} ";
constexpr std::string_view kSchemeChosen =
    "if(frametest.SearchTable.selectedRowCount==1){window.top.switchStep();"
    "frametest1.location='/TarloQuery.Zembra?action=addSearchDlg_UsrModel2&id='+"
    "frametest.SearchTable.getSelectedRowDataID() ;}"
    "else{top.sAlert('请选择查询方案！' , 0);}";
constexpr std::string_view kTemplateChosen =
    "if(frametest1.SearchTable.selectedRowCount==1){window.top.switchStep();}"
    "else{top.sAlert('请选择模板控件！' , 0);}";

// Live users' schemes that are no data alerts. The condition at the end is always true: the grid
// finds by it where the fixed condition ends.
constexpr std::string_view kUserSchemes =
    "select a.Query_ID,a.Query_Name,b.TD_Name,a.Zembra_WriteDate from Zembra_Query_Main as a , "
    "Zembra_Dict_TableDir as b where a.Zembra_Flag <> 0 and Query_System=0 and "
    "a.Query_IsDataAlert = 0 and ('orvane'='orvane') and a.Query_Dic=b.Zembra_ID";

// Templates on schemes of the table `related`, each with the field of the user's main table by
// which that is related.
std::string templatesOn(std::string_view related, std::string_view field) {
  return text::joined(
      {"select str(a.QF_ID)+'|", field,
       "' as id,a.QF_Name as [关系名称],b.QF_Type_Name as [控件类型],c.Query_Name as [查询方案],"
       "d.DDF_CName as [关联字段],a.Zembra_ModiDate as [创建时间] from Zembra_Query_Field as a "
       ",Zembra_Query_Type as b, Zembra_Query_Main as c,Zembra_DataDict_Field as d  where "
       "c.Query_MainTBID=",
       related,
       " and a.QF_System=1 and a.QF_NameID=c.Query_ID and a.QF_FieldType = b.QF_Type_ID and "
       "a.Zembra_Flag <> 0 and d.Zembra_ID=",
       field});
}

// "" when the scheme has no main table or no relation leaves it.
std::string templatesFor(Page& page, const std::string& scheme) {
  const std::string selected = metadata::selectedRelations(page, scheme).value_or("-1");
  const std::string table = frame::firstText(
      page, "select Query_MainTBID from Zembra_Query_Main where Query_ID=" + scheme);
  if (table.empty()) return {};
  std::string sql;
  for (const metadata::Path& path : metadata::paths(page, table, selected)) {
    if (!sql.empty()) sql += " union ";
    sql += templatesOn(path.table, path.mainField);
  }
  return sql.empty() ? sql : sql + " ";
}

void writeGrid(Page& page, Object& grid) {
  page.response.write(variant::spliced(frame::callMethod(grid, "getTableHtml")));
}

}  // namespace

void addsearchdlg_UsrModel(Page& page) {
  static const PageText first(embedded::control_pages::find("bind_first.html"));
  static const PageText second(embedded::control_pages::find("bind_second.html"));
  static const PageText third(embedded::control_pages::find("control_name.html"));
  const std::string schemes = first.fill();
  const std::string templates = second.fill();
  const std::string name =
      third.fill({{"check", "checkfor=noempty "}, {"size", "72"}, {"rows", "10"}});
  writeControlDialog(
      page, {"绑定模板", kFirstList, "addsearchdlg_UsrModel"},
      {{"请在列表中选择要绑定的查询方案,选择好后请按下一步继续...", schemes, kSchemeChosen, ""},
       {"请选择模板控件,如果没有模板控件出现，则无法进行绑定.", templates, kTemplateChosen, ""},
       {"保存模版.", name, "testandsave()", ""}});
}

void addSearchDlg_UsrModel1_1(Page& page) {
  frame::writeStepHead(page);
  page.response.write("请选择用户查询方案：\r\n");
  const auto grid = choiceGrid(page, "查询方案|方案目录|创建时间", kUserSchemes, 15);
  grid->put("showButton", false);
  grid->put("orderBy", "a.Zembra_ModiDate DESC");
  grid->put("MultiPage", "true");
  grid->put("Width", "100%");
  grid->put("onRowSelect", "parent.document.all.modelid.value=SearchTable.getSelectedRowDataID();");
  writeGrid(page, *grid);
  endFrame(page);
}

void addSearchDlg_UsrModel2(Page& page) {
  const std::string sql = templatesFor(page, posted(page, "id"));
  frame::writeStepHead(page);
  page.response.write("请选择模板控件：\r\n");
  const auto grid = choiceGrid(page, "关系名称|类型|查询方案|关联字段|创建时间", sql, 15);
  grid->put("Width", "95%");
  grid->put("showButton", false);
  grid->put("Search", "false");
  // It names no column of a union, which the grid lists all the same.
  grid->put("orderBy", "a.Zembra_ModiDate DESC");
  grid->put("onRowSelect", "parent.document.all.queryid.value=SearchTable.getSelectedRowDataID();");
  writeGrid(page, *grid);
  endFrame(page);
}

void addSearchDlg_UsrModel1(Page& page) {
  writeFrameWrapper(page, "addSearchDlg_UsrModel&step=1_1");
}

}  // namespace tarlo::control
