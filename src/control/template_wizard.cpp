#include "control/template_wizard.h"

#include <fmt/format.h>

#include "control/control_dialog.h"
#include "control/filter_area.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/template.h"
#include "metadata/operations.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using frame::Template;
using variant::spliced;

constexpr std::string_view kFirstList =
    "function doFirstStep(){frametest1.location='/TarloQuery.Zembra?action="
    "addSearchDlg_sysfield1_1';}";

// The main table's columns as a combo box's data. Items stand on lines of their own, and the last
// one keeps its mark: the box takes both.
std::string mainTableFields(Page& page, const Variant& scheme) {
  const Variant table = metadata::KeyField2TableID(page, scheme, false);
  const Variant rows = frame::execSQLRows(
      page, Variant("select a.DDT_Name,b.DDF_Name  from Zembra_DataDict_Table a "
                    ",Zembra_DataDict_Field b where a.Zembra_Flag=1 and b.Zembra_Flag=1 and "
                    "b.DDF_TableID=a.Zembra_ID and a.Zembra_ID=" +
                    spliced(table)));
  std::string fields;
  if (!rows.isArray()) return fields;
  const Array& cells = rows.array();
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    const std::string tableName = spliced(cells.at(0, row));
    const std::string column = spliced(cells.at(1, row));
    Variant named(tableName);
    fields.append(spliced(metadata::getTableDesc(page, named))).append(".");
    fields.append(
        spliced(metadata::getFieldDesc(page, Variant(fmt::format("{}.{}", tableName, column)))));
    fields.append("<<<<<<\r\n[").append(tableName).append("].[").append(column);
    fields.append("]>>>>>>\r\n");
  }
  return fields;
}

}  // namespace

void addSearchDlg_sysfield(Page& page) {
  static const Template first(embedded::control_pages::find("template_first.html"));
  static const Template cascade(embedded::control_pages::find("template_cascade.html"));
  static const Template dropDown(embedded::control_pages::find("template_drop_down.html"));
  static const Template preview(embedded::control_pages::find("template_preview.html"));
  const std::string firstStep = first.fill();
  const std::string cascadeStep = cascade.fill();
  const std::string dropDownStep = dropDown.fill({{"filter", filterScript(FirstRow::AsStands)}});
  const std::string previewStep = preview.fill();
  const std::string lastStep = spliced(getSaveName(page));
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
  const Variant kind = page.request.value("fieldtype");
  if (variant::equalsAsText(kind, "1")) addSearchDlg_sysField2_1(page);
  if (variant::equalsAsText(kind, "2")) addSearchDlg_sysField2_2(page);
}

void addSearchDlg_sysField2_1(Page& page) {
  static const Template form(embedded::control_pages::find("template_fields.html"));
  static const Template step(embedded::control_pages::find("template_fields_step.html"));
  const Variant scheme = page.request.value("id");
  const std::string fields = mainTableFields(page, scheme);
  const std::string markup = form.fill({{"fields", fields}, {"filter", filterArea("190", fields)}});
  step.write(page.response, {{"form", markup}, {"scheme", spliced(scheme)}});
}

Variant getSaveName(Page&) {
  static const Template name(embedded::control_pages::find("control_name.html"));
  return Variant(name.fill({{"check", ""}, {"size", "72"}, {"rows", "8"}}));
}

}  // namespace tarlo::control
