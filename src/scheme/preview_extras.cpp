#include "scheme/preview_extras.h"

#include <chrono>

#include "compile/statement_parts.h"
#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/statement_scope.h"
#include "frame/template.h"
#include "scheme/diagnosis.h"
#include "text/display_width.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::inPlace;
using frame::Place;
using frame::Template;

constexpr int kShownRows = 10;
constexpr auto kMostTime = std::chrono::seconds(5);
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
  connection->setCommandTimeout(kMostTime);
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

std::string firstRows(Page& page, const std::string& statement) {
  static const Template extras(embedded::scheme_pages::find("preview_extras.html"));
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
  static const Template reason(embedded::scheme_pages::find("preview_reason.html"));
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
