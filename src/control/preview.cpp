// Previews of what the wizards have posted.

#include "control/control_statement.h"
#include "control/operations.h"
#include "control/posted_control.h"
#include "control/wizard_parts.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/helpers.h"
#include "frame/page_text.h"
#include "frame/statement_scope.h"
#include "services/cascade_levels.h"
#include "services/data_sources.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::control {
namespace {

using frame::PageText;

constexpr std::string_view kRefusedDropDown =
    "<script>parent.sAlert('得到的查询语句有错误，无法预览！\\n"
    "请检查方案主表关联字段是否正确选择！');</script>";
constexpr std::string_view kNotPreviewable =
    "<script>parent.sAlert('得到的查询语句有错误，无法预览！');</script>";

struct DropDownLook {
  std::string_view size;    // style of the division around it
  bool keepsLastMark;       // whether the box's data end in ">>>>>>"
  std::string_view script;  // takes the division into the wizard and the wizard on
};

constexpr DropDownLook kUserDropDown = {"width:95%; height:180px", false,
                                        "parent.div4.innerHTML = prediv.innerHTML ;\r\n"
                                        "window.top.switchStep(); window.top.switchStep();"};
constexpr DropDownLook kTemplateDropDown = {
    "width:95%; height:160px", true,
    "parent.div4.innerHTML = prediv.innerHTML;\r\n"
    "parent.TarloDialog.action.value = 'savesearch_sysField1';\r\n"
    "window.top.switchStep();"};

// When the database accepts the statement, writes the drop-down with its rows and gives true. A
// statement too long for the log is run as the log's words, which give no rows. Never raises.
bool writeDropDownPreview(Page& page, std::string sql, const DropDownLook& look) {
  static const PageText preview(embedded::control_pages::find("drop_down_preview.html"));
  if (!runsAsTest(page, sql)) return false;
  ErrorState err;
  const frame::Rows rows =
      err.value([&] { return frame::asDesigner(page, [&] { return frame::rows(page, sql); }); });
  services::OptionList options;
  for (frame::Row row : rows) options.add(row.text(1), row.text(0));
  preview.write(page.response, {{"size", look.size},
                                {"data", look.keepsLastMark ? options.text() : options.joined()},
                                {"script", look.script}});
  return true;
}

// The end of a preview in a dialog of its own: a button that closes it, and the dialog's foot.
void writePreviewEnd(Page& page) {
  frame::writeDialogBodyEnd(page);
  page.response.write(
      "<div align=\"right\"><input type=\"button\" class=\"btnX\" value=\"关闭\" "
      "onclick=\"window.close()\"></div>\r\n");
  frame::writeDialogFoot(page);
}

// Whether a live control is made of the statement.
bool isStored(Page& page, std::string_view statement) {
  const std::string literal = text::doubledQuotes(statement);
  return !frame::rows(
              page,
              text::joined({"select top 1 QF_ID from Zembra_Query_Field where Zembra_Flag <> 0 and "
                            "(QF_Relation = '",
                            literal, "' or CHARINDEX('", literal, text::kPartMark,
                            "', QF_Relation) = 1)"}))
              .empty();
}

}  // namespace

void previewSearchdlg_UsrField(Page& page) {
  const std::string kind = posted(page, "fieldtype");
  if (kind == "1") previewSearchdlg_UsrField1(page);
  if (kind == "2") previewSearchdlg_UsrField2(page);
  if (kind == "3") previewSearchdlg_UsrField3(page);
}

void previewSearchdlg_UsrField1(Page& page) {
  const ControlColumns columns = postedColumns(page);
  const std::string filter =
      compileControlFilter(posted(page, "filter"), FilterUse::PreviewUserControl);
  const std::string sql = oneTableStatement(columns.value, columns.text, filter);
  if (!writeDropDownPreview(page, sql, kUserDropDown)) page.response.write(kRefusedDropDown);
}

void previewSearchdlg_UsrField2(Page& page) {
  static const PageText preview(embedded::control_pages::find("cascade_preview.html"));
  const ControlColumns columns = postedColumns(page);
  std::string sql = twoTableStatement(page, posted(page, "id"), columns.value, columns.text);
  const bool isGrouped = sql.find(" group by ") != std::string::npos;
  sql = withCondition(sql, isGrouped ? "[].Zembra_Flag <> 0" : "[]. Zembra_Flag <> 0");
  if (runsAsTest(page, sql)) {
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
  const std::string scheme = posted(page, "id");
  const SchemeColumns columns(page, scheme);
  std::string sql = "select 1 as tempidcolumn_V1";
  for (const std::string& number : postedColumnNumbers(page)) sql += columns.selectItem(number);
  sql = withCondition(sql + fromPart(page, scheme), "1 = 0");
  if (!runsAsTest(page, sql)) return page.response.write(asScript(kNotSaveable));
  page.session.put("query_sql", Variant(sql));
  page.session.put("query_title", Variant(postedTitles(page)));
  page.response.write("<script>parent.step4_privew();</script>");
}

void showSearchpreview_UsrField(Page& page) {
  static const PageText preview(embedded::control_pages::find("list_preview.html"));
  const std::string sql = variant::spliced(page.session.get("query_sql"));
  const std::string titles = variant::spliced(page.session.get("query_title"));
  page.session.put("query_sql", "");
  page.session.put("query_title", "");
  frame::writeStepHead(page);
  ErrorState err;
  const std::string grid = err.value([&] { return listGrid(page, sql, titles, "98%"); });
  preview.write(page.response, {{"grid", grid}});
}

void previewSearchdlg_sysField(Page& page) {
  frame::writeDialogHead(page, "模板控件预览", frame::DialogBody::WindowColour);
  const std::string kind = posted(page, "fieldtype");
  if (kind == "1") previewSearchdlg_sysField1(page);
  if (kind == "2") previewSearchdlg_sysField2(page);
  writePreviewEnd(page);
}

void previewSearchdlg_sysField1(Page& page) {
  const std::string filter =
      compileControlFilter(posted(page, "filter"), FilterUse::PreviewTemplateControl);
  const std::string sql = templateDropDown(page, postedTemplateColumns(page), filter);
  if (writeDropDownPreview(page, sql, kTemplateDropDown)) return;
  page.response.write(kNotPreviewable);
  page.response.write("<div id = prediv style=\"height:200px\"></div>\r\n");
}

void previewSearchdlg_sysField2(Page& page) {
  static const PageText preview(embedded::control_pages::find("template_cascade_preview.html"));
  const auto cascade = postedCascade(page);
  if (!cascade) return page.response.write(kOneLevel);
  services::offerCascade(page, cascade->levels, frame::kDesignersRights);
  preview.write(page.response, {{"levels", cascade->levels},
                                {"options", services::storedOptions(page, cascade->statement)}});
}

void showSearchpreview_SysField(Page& page) {
  static const PageText body(embedded::control_pages::find("show_cascade_of_caller.html"));
  const std::string statement = posted(page, "sql");
  const bool isAllowed = frame::isSwitchedOn(page, "statementsByUrl") || isStored(page, statement);
  if (!isAllowed && page.statements.refusals != nullptr) {
    page.statements.refusals->refused(statement, "no stored control has this statement");
  }
  frame::writeDialogHead(page, "级联控件预览", frame::DialogBody::WindowColour);
  body.write(page.response,
             {{"levels", posted(page, "rel")},
              {"options", isAllowed ? services::storedOptions(page, statement) : ""}});
  writePreviewEnd(page);
}

}  // namespace tarlo::control
