// The wizard of a user's control: its dialog, and the steps of a list.

#include "control/control_statement.h"
#include "control/operations.h"
#include "control/posted_control.h"
#include "control/wizard_parts.h"
#include "embedded_control_pages.h"
#include "frame/page_text.h"
#include "metadata/stored_schemes.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::control {
namespace {

using frame::inPlace;
using frame::PageText;
using frame::Place;

constexpr std::string_view kFirstList =
    "function doFirstStep(){frametest.location='/TarloQuery.Zembra?action="
    "addSearchDlg_UsrField1_1&field1=1';}";

// What stands behind the title's first dot, without double quotes.
std::string shortTitle(const std::string& title) {
  const auto dot = title.find('.');
  return text::replace(dot == std::string::npos ? title : title.substr(dot + 1), "\"", "");
}

// A box for each title, two in a row of the table.
std::string titleBoxes(const std::vector<std::string>& titles) {
  std::string rows;
  for (std::size_t i = 0; i < titles.size(); ++i) {
    if (i % 2 == 0) rows += "<tr>";
    rows +=
        "<td><input type=text name=TitleField class = \"txtZembra\" size=42 maxlength = 25 "
        "value=\"" +
        inPlace(Place::Attribute, titles[i]) + "\"></td>";
    if (i % 2 == 1) rows += "</tr>\r\n";
  }
  if (titles.size() % 2 == 1) rows += "<td>&nbsp;</td></tr>\r\n";
  return rows;
}

}  // namespace

void addSearchDlg_UsrField(Page& page) {
  static const PageText first(embedded::control_pages::find("field_wizard_first.html"));
  static const PageText name(embedded::control_pages::find("control_name.html"));
  static const std::string preview =
      "<div id=div4></div><iframe name=\"frametest1\" "
      "src=\"/TarloQuery.Zembra?action=getQueryTable\" width=\"600\" height=\"300\" "
      "frameborder=\"0\"></iframe>";
  const std::string firstStep = first.fill();
  const std::string lastStep = name.fill({{"check", ""}, {"size", "43"}, {"rows", "15"}});
  writeControlDialog(
      page, {"添加用户控件", kFirstList, "addSearchDlg_UsrField"},
      {{"请在列表中选择要用到的查询方案，并确定要新增的控件类型.", firstStep, "next1_2();", ""},
       {"", "<div id=div2></div>", "next2_3();", ""},
       {"", "<div id=div3></div><input type=hidden name=action>", "next3_4();", ""},
       {"", preview, "", "back_4();"},
       {"", lastStep, "next_save();", ""}});
}

void addSearchDlg_UsrField2(Page& page) {
  const std::string kind = posted(page, "fieldtype");
  const Variant scheme = page.request.value("queryid");
  if (kind == "1") addSearchDlg_UsrField2_1(page, scheme);
  if (kind == "2") addSearchDlg_UsrField2_2(page, scheme);
  if (kind == "3") addSearchDlg_UsrField2_3(page, scheme);
}

Variant addSearchDlg_UsrField2_3(Page& page, const Variant& id) {
  static const PageText functions(embedded::control_pages::find("list_functions.js"));
  static const PageText step(embedded::control_pages::find("list_step.html"));
  const std::string scheme = variant::spliced(id);
  const auto titles = metadata::columnTitles(page, scheme);
  if (!titles) throw RuntimeError(ErrorNumber::TypeMismatch, "the scheme's titles");
  std::string columns = "<?xml version = '1.0' encoding = 'gb2312' ?><root>";
  std::size_t number = 0;
  for (const std::string& title : *titles) {
    columns += text::joined({"<option><value>", std::to_string(++number), "</value><text>",
                             inPlace(Place::Text, title), "</text></option>"});
  }
  columns += "</root>";
  step.write(page.response,
             {{"functions", functions.fill()}, {"columns", columns}, {"scheme", scheme}});
  return {};
}

void addSearchDlg_UsrField3(Page& page) {
  static const PageText functions(embedded::control_pages::find("titles_functions.js"));
  static const PageText step(embedded::control_pages::find("titles_step.html"));
  const auto chosen = postedColumnNumbers(page);
  if (chosen.empty()) {
    page.response.write("<script>parent.sAlert('请选择显示字段！',0);</script>");
    return;
  }
  ErrorState err;
  const auto all = err.value([&] { return metadata::columnTitles(page, posted(page, "id")); });
  std::vector<std::string> titles;
  for (const std::string& number : chosen) {
    err.run([&] { titles.push_back(shortTitle(textAt(all, number))); });
  }
  step.write(page.response, {{"functions", functions.fill()}, {"rows", titleBoxes(titles)}});
}

}  // namespace tarlo::control
