#include "services/operations.h"

#include <optional>
#include <string>

#include "embedded_services_pages.h"
#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/page_text.h"
#include "frame/policy.h"
#include "text/pieces.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::services {
namespace {

using frame::PageText;
using variant::spliced;

// The box's inner size, in the 16-bit arithmetic of the page's language.
std::string reduced(const Variant& size, int by) {
  const int inner = variant::toInt16(size) - by;
  if (inner < INT16_MIN) throw RuntimeError(ErrorNumber::Overflow, "the dialog's size");
  return std::to_string(inner);
}

std::string buttons(const std::string& id, const Variant& given) {
  if (!frame::isBlank(given)) {
    return "<div id=winBtnID>" + spliced(given) + "</div>\r\n";
  }
  static const PageText standard(embedded::services_pages::find("div_dialog_buttons.html"));
  return standard.fill({{"id", id}});
}

constexpr std::size_t kHelpTitle = 0;
constexpr std::size_t kHelpText = 1;

// The column of all rows in one text; nothing when there are no rows.
std::optional<std::string> actionHelp(Page& page, const Variant& action, std::size_t column) {
  const frame::Rows rows = frame::rows(
      page,
      "select SubHelp_title,SubHelp_popup from  Zembra_SubHelp , Zembra_Functions Where "
      "SubHelp_FuncID = Func_ID and Func_MenuID = " +
          spliced(page.session.get("usrICID")) + " and Func_Action = '" + spliced(action) +
          "' order by SubHelp_ID ");
  if (rows.empty()) return {};
  std::string joined;
  for (const frame::Row row : rows) joined += row.text(column);
  return joined;
}

// The id of a table by name, as a statement.
std::string tableIdOf(const Variant& name) {
  return "SELECT DDT_ID FROM Zembra_DataDict_Table WHERE DDT_Name ='" + spliced(name) + "'";
}

std::string ofTable(const Variant& name) {
  return " FROM Zembra_DataDict_Field WHERE DDF_TableID =(" + tableIdOf(name) + ")";
}

Variant requiredCell(Page& page, const std::string& sql) {
  const frame::Rows rows = frame::rows(page, sql);
  if (rows.empty()) throw RuntimeError(ErrorNumber::TypeMismatch, "no such table or field");
  return rows.front().value(0);
}

}  // namespace

Variant TarloDivDialog(Page& page, const Variant& id, const Variant& WinTitle,
                       const Variant& TopicTitle, const Variant& WinWidth, const Variant& WinHeight,
                       const Variant& WinBody, const Variant& WinButon) {
  static const PageText head(embedded::services_pages::find("div_dialog_head.html"));
  static const PageText body(embedded::services_pages::find("div_dialog_body.html"));
  static const PageText foot(embedded::services_pages::find("div_dialog_foot.html"));
  const std::string name = spliced(id);
  const std::string width = spliced(WinWidth);
  const std::string height = spliced(WinHeight);
  head.write(page.response, {{"id", name}, {"width", width}, {"height", height}});
  body.write(page.response, {{"id", name},
                             {"innerWidth", reduced(WinWidth, 1)},
                             {"innerHeight", reduced(WinHeight, 5)},
                             {"title", spliced(WinTitle)},
                             {"topic", spliced(TopicTitle)},
                             {"body", spliced(WinBody)}});
  page.response.write(buttons(name, WinButon));
  foot.write(page.response, {{"id", name}, {"width", width}, {"height", height}});
  return {};
}

Variant getActionHelp(Page& page, const Variant& sAction) {
  const std::optional<std::string> joined = actionHelp(page, sAction, kHelpText);
  if (!joined) return "暂时没有相关的帮助";
  std::string items;
  for (const std::string_view line : text::split(*joined, "\r\n")) {
    if (line.empty()) continue;
    items.append("<li>").append(frame::inPlace(frame::Place::Text, line)).append("</li>");
  }
  return items;
}

Variant getActionHelpTitle(Page& page, const Variant& sAction) {
  return Variant(actionHelp(page, sAction, kHelpTitle).value_or("暂时没有相关的主题"));
}

Variant getUserTableName(Page& page, const Variant&, const Variant& showAll) {
  const std::string condition =
      variant::equals(showAll, true) ? "" : "substring(DDT_Name,1,7)='UserTb_' and ";
  return frame::rows(page, "select DDT_Name,DDT_CName from Zembra_DataDict_Table where " +
                               condition + "DDT_Status <> 1")
      .table();
}

Variant getUserFieldName(Page& page, const Variant& sTableName) {
  return frame::rows(page, "SELECT DDF_Name,DDF_CName" + ofTable(sTableName)).table();
}

Variant getTableIDField(Page& page, const Variant& sTableName) {
  return requiredCell(page, "SELECT DDF_Name" + ofTable(sTableName) + " and DDF_Type=1");
}

Variant getTableIDValue(Page& page, const Variant& sTableName) {
  return requiredCell(page, tableIdOf(sTableName));
}

Variant getFieldIDValue(Page& page, const Variant& sTableName, const Variant& sFieldName) {
  return requiredCell(
      page, "SELECT DDF_ID" + ofTable(sTableName) + " and DDF_Name='" + spliced(sFieldName) + "'");
}

Variant getPolicyInfo(Page& page, const Variant& strName) {
  return frame::policyTable(page, spliced(strName));
}

}  // namespace tarlo::services
