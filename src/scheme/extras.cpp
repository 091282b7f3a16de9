#include "scheme/extras.h"

#include <fmt/format.h>

#include <chrono>
#include <cstdint>

#include "compile/statement_parts.h"
#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/page_text.h"
#include "frame/statement_scope.h"
#include "scheme/diagnosis.h"
#include "text/display_width.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::inPlace;
using frame::PageText;
using frame::Place;
using variant::spliced;

// FNV-1a, 64 bits: tells two texts apart, guards nothing.
std::uint64_t hashOf(std::string_view text) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return hash;
}

std::string nameOf(Page& page, const Variant& user) {
  if (variant::equalsAsText(user, spliced(page.session.get("usrid")))) return "您在另一个窗口";
  if (!variant::isNumeric(user)) return "其他用户";
  const frame::StatementScope scope(page,
                                    {.reads = {database::TableGroup::Organisation}, .writes = {}});
  return spliced(frame::firstCell(
      page, "select User_Name from Zembra_User where User_ID=" + spliced(user), "其他用户"));
}

constexpr int kShownRows = 10;
constexpr auto kMostRowsTime = std::chrono::seconds(5);
constexpr std::size_t kStatementColumns = 90;
constexpr std::size_t kCellColumns = 40;

std::string cellMarkup(const Variant& value) {
  if (value.isNull()) return "<td class=\"tarlo-null\">NULL</td>";
  const std::string text = text::visible(variant::spliced(value));
  const std::string shown = text::cutTo(text, kCellColumns);
  const std::string title = shown == text ? "" : " title=\"" + inPlace(Place::Encoded, text) + "\"";
  return "<td" + title + ">" + inPlace(Place::Encoded, shown) + "</td>";
}

// The table of the first rows, or "" when there are none.
std::string rowsMarkup(Page& page, const std::string& statement) {
  database::Lease connection = frame::borrowConnection(page);
  connection->setCommandTimeout(kMostRowsTime);
  const auto rows = connection->open(statement);
  if (rows->atEnd()) return "";
  std::string table = "<table class=\"tarlo-rows\"><thead><tr>";
  for (std::size_t i = 0; i < rows->fieldCount(); ++i) {
    table += "<th>" + inPlace(Place::Encoded, rows->fieldName(i)) + "</th>";
  }
  table += "</tr></thead><tbody>";
  for (int row = 1; !rows->atEnd(); ++row) {
    table += "<tr>";
    for (std::size_t i = 0; i < rows->fieldCount(); ++i) table += cellMarkup(rows->value(i));
    table += "</tr>";
    if (row == kShownRows) break;  // before the engine looks for a further one
    rows->moveNext();
  }
  return table + "</tbody></table>";
}

}  // namespace

bool hasExtras(Page& page) {
  return frame::isSwitchedOn(page, "designerExtras");
}

SchemeState schemeState(Page& page, const Variant& scheme) {
  if (!hasExtras(page) || !variant::isNumeric(scheme)) return {};
  const frame::Rows rows = frame::rows(
      page,
      "select Zembra_ModiUser,Zembra_ModiDate,Zembra_Flag,Query_Name,Query_Desc,Query_Fields,"
      "Query_Vir,Query_Rel,Query_Static,Query_Group,Query_MultiRelSel,Query_MultiRel,Query_Dic,"
      "Query_System,Query_MainTBID from Zembra_Query_Main where "
      "Query_ID=" +
          spliced(scheme));
  if (rows.empty()) return {};
  const frame::Row row = rows.front();
  std::string all;
  for (std::size_t column = 0; column < row.columns(); ++column) {
    all.append(row.text(column)).append(1, '\0');
  }
  const bool isDeleted = row.text(2) == "0";
  return {fmt::format("{:016x}", hashOf(all)),
          isDeleted ? "此方案已被删除"
                    : nameOf(page, row.value(0)) + "已于 " + row.text(1) + " 修改过此方案"};
}

std::string wizardExtras(Page& page, std::string_view scheme) {
  static const PageText script(embedded::scheme_pages::find("wizard_extras.js"));
  ErrorState err;
  std::string text;
  err.run([&] {
    const SchemeState state = schemeState(page, Variant(scheme));
    if (state.stamp.empty()) return;
    text = "<script>\r\n" + script.fill({{"id", scheme}, {"stamp", state.stamp}}) + "</script>\r\n";
  });
  return text;
}

std::string firstRows(Page& page, const std::string& statement) {
  static const PageText extras(embedded::scheme_pages::find("preview_extras.html"));
  ErrorState err;
  std::string rows;
  const frame::DispensableScope dispensable(page);
  err.run([&] { rows = frame::asDesigner(page, [&] { return rowsMarkup(page, statement); }); });
  if (rows.empty()) rows = err.failed() ? "<p>前十条记录暂时无法读取。</p>" : "<p>没有记录。</p>";
  const std::string text = compile::laidOut(statement, kStatementColumns);
  return extras.fill({{"statement", text}, {"rows", rows}});
}

std::string refusalReason(Page& page, const compile::Definition& definition,
                          const std::string& statement) {
  static const PageText reason(embedded::scheme_pages::find("preview_reason.html"));
  ErrorState err;
  Diagnosis found;
  const frame::DispensableScope dispensable(page);
  err.run([&] { found = diagnose(page, definition, statement); });
  if (found.reason.empty()) return "";
  const std::string where =
      found.where.empty() ? "" : "<b>" + inPlace(Place::Encoded, found.where) + "</b>：";
  return reason.fill({{"where", where}, {"reason", found.reason}});
}

}  // namespace tarlo::scheme
