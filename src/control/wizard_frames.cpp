// Pages of the wizards' frames.

#include "control/operations.h"
#include "control/posted_control.h"
#include "control/wizard_parts.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/page_text.h"
#include "frame/sibling_calls.h"
#include "services/data_sources.h"
#include "text/pieces.h"

namespace tarlo::control {
namespace {

using frame::callMethod;
using frame::PageText;

// A drop-down takes no scheme with statistics, a list does.
std::string userSchemes(std::string_view kind) {
  std::string sql =
      " select a.Query_ID,a.Query_Name,a.Query_Desc,a.Zembra_WriteDate from Zembra_Query_Main as "
      "a,Zembra_Dict_TableDir as b where a.Query_System = 0 and a.Zembra_Flag <> 0 and "
      "a.Query_Dic=b.Zembra_ID and a.Query_IsDataAlert = 0";
  if (kind != "3") sql += " and a.Query_HasStatic <> 1";
  return sql;
}

constexpr std::string_view kSystemSchemes =
    " select a.Query_ID,a.Query_Name,a.Query_Desc,a.Zembra_WriteDate from Zembra_Query_Main as a,"
    "Zembra_Dict_TableDir as b where a.Query_System = 1 and a.Query_IsDataAlert = 0 and "
    "a.Zembra_Flag <> 0 and a.Query_Dic=b.Zembra_ID";

}  // namespace

void getQueryTable(Page& page) {
  frame::writeStepHead(page);
  page.response.write("&nbsp;\r\n");
  endFrame(page);
}

void addSearchDlg_UsrField1_1(Page& page) {
  frame::writeStepHead(page);
  const auto grid =
      choiceGrid(page, "查询方案|方案说明|创建时间", userSchemes(posted(page, "field1")), 13);
  grid->put("showButton", false);
  grid->put("orderBy", "a.Zembra_ModiDate DESC");
  grid->put("MultiPage", "true");
  grid->put("Width", "100%");
  grid->put("onRowSelect", "parent.document.all.queryid.value=SearchTable.getSelectedRowDataID();");
  callMethod(*grid, "WriteTable");
  endFrame(page);
}

void addSearchDlg_UsrField1_2(Page& page) {
  static const PageText choice(embedded::control_pages::find("scheme_choice.html"));
  static const PageText element(embedded::control_pages::find("scheme_choice_element.html"));
  services::OptionList options;
  options.add("请选查询方案...", "-1");
  for (frame::Row row : frame::rows(page, userSchemes(posted(page, "contrltype")))) {
    options.add(text::trim(row.text(1)), row.text(0));
  }
  const std::string markup = element.fill({{"data", options.joined()}});
  choice.write(page.response, {{"element", markup}});
}

void addSearchDlg_UsrField1(Page& page) {
  writeFrameWrapper(page, "addSearchDlg_UsrField&step=1_1");
}

void addSearchDlg_sysfield1_1(Page& page) {
  static const PageText kinds(embedded::control_pages::find("template_kinds.html"));
  frame::writeStepHead(page);
  const auto grid = choiceGrid(page, "查询方案|方案说明|创建时间", kSystemSchemes, 10);
  grid->put("showButton", false);
  grid->put("Search", "false");
  grid->put("orderBy", "a.Zembra_ModiDate DESC");
  grid->put("MultiPage", "true");
  grid->put("Width", "100%");
  callMethod(*grid, "WriteTable");
  kinds.write(page.response);
  endFrame(page);
}

void addSearchDlg_sysfield1(Page& page) {
  writeFrameWrapper(page, "addSearchDlg_sysField&step=1_1");
}

}  // namespace tarlo::control
