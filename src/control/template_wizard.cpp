// The wizard of templates: its dialog, and the step of a drop-down.

#include "control/operations.h"
#include "control/posted_control.h"
#include "control/wizard_parts.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/page_text.h"
#include "metadata/dictionary.h"
#include "metadata/stored_schemes.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using frame::PageText;
using text::joined;

constexpr std::string_view kFirstList =
    "function doFirstStep(){frametest1.location='/TarloQuery.Zembra?action="
    "addSearchDlg_sysfield1_1';}";

// The main table's columns as a combo box's data. Items stand on lines of their own, and the last
// one keeps its mark: the box takes both.
std::string mainTableFields(Page& page, std::string_view scheme) {
  const std::string mainTable = metadata::keyTable(page, scheme).value_or("-1");
  std::string fields;
  for (frame::Row row :
       frame::rows(page,
                   "select a.DDT_Name,b.DDF_Name  from Zembra_DataDict_Table a "
                   ",Zembra_DataDict_Field b where a.Zembra_Flag=1 and b.Zembra_Flag=1 and "
                   "b.DDF_TableID=a.Zembra_ID and a.Zembra_ID=" +
                       mainTable)) {
    const std::string table = row.text(0);
    const std::string column = row.text(1);
    const std::string tableCaption = metadata::tableCaption(page, table).value_or("-1");
    const std::string caption =
        metadata::fieldCaption(page, joined({table, ".", column})).value_or("-1");
    fields +=
        joined({tableCaption, ".", caption, "<<<<<<\r\n[", table, "].[", column, "]>>>>>>\r\n"});
  }
  return fields;
}

}  // namespace

void addSearchDlg_sysfield(Page& page) {
  static const PageText first(embedded::control_pages::find("template_first.html"));
  static const PageText cascade(embedded::control_pages::find("template_cascade.html"));
  static const PageText dropDown(embedded::control_pages::find("template_drop_down.html"));
  static const PageText preview(embedded::control_pages::find("template_preview.html"));
  const std::string firstStep = first.fill();
  const std::string cascadeStep = cascade.fill();
  const std::string dropDownStep = dropDown.fill({{"filter", filterScript(FirstRow::AsStands)}});
  const std::string previewStep = preview.fill();
  const std::string lastStep = variant::spliced(getSaveName(page));
  writeControlDialog(
      page, {"新增模板控件", kFirstList, "addSearchDlg_sysfield"},
      {{"请在列表中选择查询方案，确定控件类型，然后按下一步继续...", firstStep, "nextStep();", ""},
       {"增加级联模板控件", cascadeStep, "next2_4();", ""},
       {"增加下拉框模板控件", dropDownStep, "next3_4();", "moveStep(-2);"},
       {"预览模板控件", previewStep, "",
        "if(document.all.field1.value==2)moveStep(-2); else moveStep(-1);"},
       {"保存模板控件", lastStep, "comboxsave();", ""}});
}

void addSearchDlg_sysField2(Page& page) {
  const std::string kind = posted(page, "fieldtype");
  if (kind == "1") addSearchDlg_sysField2_1(page);
  if (kind == "2") addSearchDlg_sysField2_2(page);
}

void addSearchDlg_sysField2_1(Page& page) {
  static const PageText form(embedded::control_pages::find("template_fields.html"));
  static const PageText step(embedded::control_pages::find("template_fields_step.html"));
  const std::string scheme = posted(page, "id");
  const std::string fields = mainTableFields(page, scheme);
  const std::string markup = form.fill({{"fields", fields}, {"filter", filterArea("190", fields)}});
  step.write(page.response, {{"form", markup}, {"scheme", scheme}});
}

Variant getSaveName(Page&) {
  static const PageText name(embedded::control_pages::find("control_name.html"));
  return Variant(name.fill({{"check", ""}, {"size", "72"}, {"rows", "8"}}));
}

}  // namespace tarlo::control
