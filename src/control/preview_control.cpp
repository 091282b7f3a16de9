#include "control/preview_control.h"

#include "control/control_answers.h"
#include "control/control_definition.h"
#include "control/control_filter.h"
#include "control/control_statement.h"
#include "control/drop_down_preview.h"
#include "control/list_grid.h"
#include "control/scheme_columns.h"
#include "embedded_control_pages.h"
#include "frame/dialog_frame.h"
#include "frame/statement_scope.h"
#include "frame/template.h"
#include "metadata/operations.h"
#include "services/cascade_levels.h"
#include "services/data_sources.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using frame::Template;
using variant::spliced;

constexpr std::string_view kRefusedDropDown =
    "<script>parent.sAlert('得到的查询语句有错误，无法预览！\\n"
    "请检查方案主表关联字段是否正确选择！');</script>";

constexpr DropDownLook kUserDropDown = {"width:95%; height:180px", false,
                                        "parent.div4.innerHTML = prediv.innerHTML ;\r\n"
                                        "window.top.switchStep(); window.top.switchStep();"};

}  // namespace

void previewSearchdlg_UsrField(Page& page) {
  const Variant kind = page.request.value("fieldtype");
  if (variant::equalsAsText(kind, "1")) previewSearchdlg_UsrField1(page);
  if (variant::equalsAsText(kind, "2")) previewSearchdlg_UsrField2(page);
  if (variant::equalsAsText(kind, "3")) previewSearchdlg_UsrField3(page);
}

void previewSearchdlg_UsrField1(Page& page) {
  const ControlColumns columns = postedColumns(page);
  const std::string filter =
      compileControlFilter(spliced(page.request.value("filter")), FilterUse::PreviewUserControl);
  const std::string sql = oneTableStatement(columns.value, columns.text, filter);
  if (!writeDropDownPreview(page, sql, kUserDropDown)) page.response.write(kRefusedDropDown);
}

void previewSearchdlg_UsrField2(Page& page) {
  static const Template preview(embedded::control_pages::find("cascade_preview.html"));
  const ControlColumns columns = postedColumns(page);
  const std::string scheme = spliced(page.request.value("id"));
  std::string sql = twoTableStatement(page, scheme, columns.value, columns.text);
  const bool isGrouped = sql.find(" group by ") != std::string::npos;
  sql = withCondition(sql, isGrouped ? "[].Zembra_Flag <> 0" : "[]. Zembra_Flag <> 0");
  ErrorState err;
  if (runsAsTest(page, err, sql)) {
    const std::string levels = postedLevels(page, "");
    services::offerCascade(page, levels, frame::kDesignersRights);
    preview.write(page.response,
                  {{"levels", levels}, {"options", services::storedOptions(page, sql)}});
  } else {
    page.response.write(kNotPreviewable);
  }
  writePreviewEnd(page);
}

void previewSearchdlg_UsrField3(Page& page) {
  const std::string scheme = spliced(page.request.value("id"));
  const SchemeColumns columns(page, scheme);
  std::string sql = "select 1 as tempidcolumn_V1";
  for (const std::string& number : chosenColumns(spliced(page.request.value("viewfield")))) {
    sql += columns.selectItem(number);
  }
  sql += fromPart(metadata::getQuerySQL(page, Variant(scheme), false));
  sql = withCondition(sql, "1 = 0");
  ErrorState err;
  std::string tested = sql;
  if (!runsAsTest(page, err, tested)) {
    page.response.write("<script>" + std::string(kNotSaveable) + "</script>");
    return;
  }
  page.session.put("query_sql", Variant(sql));
  page.session.put("query_title", Variant(postedTitles(page)));
  page.response.write("<script>parent.step4_privew();</script>");
}

void showSearchpreview_UsrField(Page& page) {
  static const Template preview(embedded::control_pages::find("list_preview.html"));
  const std::string sql = spliced(page.session.get("query_sql"));
  const std::string titles = spliced(page.session.get("query_title"));
  page.session.put("query_sql", "");
  page.session.put("query_title", "");
  frame::writeStepHead(page);
  ErrorState err;
  const Variant grid = err.value([&] { return listGrid(page, sql, titles, "98%"); });
  preview.write(page.response, {{"grid", spliced(grid)}});
}

}  // namespace tarlo::control
