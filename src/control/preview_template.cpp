#include "control/preview_template.h"

#include "control/control_answers.h"
#include "control/control_filter.h"
#include "control/drop_down_preview.h"
#include "control/template_definition.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "frame/template.h"
#include "services/cascade_levels.h"
#include "services/data_sources.h"
#include "text/sql_text.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using frame::Template;
using variant::spliced;

constexpr DropDownLook kTemplateDropDown = {
    "width:95%; height:160px", true,
    "parent.div4.innerHTML = prediv.innerHTML;\r\n"
    "parent.TarloDialog.action.value = 'savesearch_sysField1';\r\n"
    "window.top.switchStep();"};

// Whether a live control scheme is made of the statement.
bool isStored(Page& page, const std::string& statement) {
  const std::string literal = text::doubledQuotes(statement);
  return frame::execSQLRows(
             page, Variant("select top 1 QF_ID from Zembra_Query_Field where Zembra_Flag <> 0 and "
                           "(QF_Relation = '" +
                           literal + "' or CHARINDEX('" + literal + std::string(kPartMark) +
                           "', QF_Relation) = 1)"))
      .isArray();
}

}  // namespace

void previewSearchdlg_sysField(Page& page) {
  frame::writeDialogHead(page, "模板控件预览", frame::DialogBody::WindowColour);
  const Variant kind = page.request.value("fieldtype");
  if (variant::equalsAsText(kind, "1")) previewSearchdlg_sysField1(page);
  if (variant::equalsAsText(kind, "2")) previewSearchdlg_sysField2(page);
  writePreviewEnd(page);
}

void previewSearchdlg_sysField1(Page& page) {
  const std::string filter = compileControlFilter(spliced(page.request.value("filter")),
                                                  FilterUse::PreviewTemplateControl);
  const std::string sql = templateDropDown(page, postedTemplateColumns(page), filter);
  if (writeDropDownPreview(page, sql, kTemplateDropDown)) return;
  page.response.write(kNotPreviewable);
  page.response.write("<div id = prediv style=\"height:200px\"></div>\r\n");
}

void previewSearchdlg_sysField2(Page& page) {
  static const Template preview(embedded::control_pages::find("template_cascade_preview.html"));
  const auto cascade = postedCascade(page);
  if (!cascade) return page.response.write(kOneLevel);
  services::offerCascade(page, cascade->levels, frame::kDesignersRights);
  preview.write(page.response, {{"levels", cascade->levels},
                                {"options", services::storedOptions(page, cascade->statement)}});
}

void showSearchpreview_SysField(Page& page) {
  static const Template body(embedded::control_pages::find("show_cascade_of_caller.html"));
  const std::string statement = spliced(page.request.value("sql"));
  const bool isAllowed = frame::isSwitchedOn(page, "statementsByUrl") || isStored(page, statement);
  if (!isAllowed && page.statements.refusals != nullptr) {
    page.statements.refusals->refused(statement, "no stored control has this statement");
  }
  frame::writeDialogHead(page, "级联控件预览", frame::DialogBody::WindowColour);
  body.write(page.response,
             {{"levels", spliced(page.request.value("rel"))},
              {"options", isAllowed ? services::storedOptions(page, statement) : ""}});
  writePreviewEnd(page);
}

}  // namespace tarlo::control
