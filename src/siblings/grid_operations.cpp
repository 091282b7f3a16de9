#include <algorithm>
#include <optional>

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "org/may_call.h"
#include "siblings/grid_rows.h"
#include "siblings/grid_state.h"
#include "siblings/page_operations.h"
#include "text/csv.h"
#include "text/fold.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"
#include "variant/text.h"

namespace tarlo::siblings {
namespace {

constexpr int kBadRequest = 400;
constexpr int kForbidden = 403;
constexpr int kGone = 410;

std::string textOf(Page& page, std::string_view name) {
  return variant::spliced(page.request.value(name));
}

// A whole number from 0; 0 for anything else.
std::int64_t numberOf(Page& page, std::string_view name) {
  constexpr std::size_t kMostDigits = 9;
  const std::string text = textOf(page, name);
  const bool isNumber = !text.empty() && text.size() <= kMostDigits &&
                        text.find_first_not_of("0123456789") == std::string::npos;
  return isNumber ? std::stoll(text) : 0;
}

GridRequest requestOf(Page& page, const GridDefinition& grid) {
  constexpr std::ptrdiff_t kMostSearchUnits = 100;
  GridRequest request;
  request.page = std::max<std::int64_t>(1, numberOf(page, "page"));
  const std::int64_t column = numberOf(page, "sort");
  if (column > 0 && column <= static_cast<std::int64_t>(grid.captions.size())) {
    request.sort = {static_cast<std::size_t>(column) + 1,
                    text::equalsNoCase(textOf(page, "dir"), "desc")};
  }
  request.filter.conditions = {textOf(page, "view"), textOf(page, "right")};
  if (grid.search) {
    const std::string search = textOf(page, "search");
    request.filter.search = text::trim(variant::left(search, kMostSearchUnits));
  }
  return request;
}

// The grid of the request, if every condition is one of its own; otherwise the error has been sent.
std::shared_ptr<GridState> gridOf(Page& page) {
  auto grid = SessionGrids::of(page)->find(textOf(page, "grid"));
  if (grid == nullptr) {
    sendJson(page, errorJson(kGone, "列表已过期，请刷新页面后再试。"));
    return nullptr;
  }
  if (!org::mayCall(page, grid->access)) {
    sendJson(page, errorJson(kForbidden, "您没有查看此列表的权限。"));
    return nullptr;
  }
  for (const std::string_view name : {"view", "right"}) {
    if (grid->conditions.allows(textOf(page, name))) continue;
    sendJson(page, errorJson(kBadRequest, "不允许使用此查询条件。"));
    return nullptr;
  }
  return grid;
}

// A text that a spreadsheet might run as a formula gets an apostrophe in front; numbers stay.
// Captions are texts of designers, and go through it too.
std::string csvField(const Variant& value) {
  std::string text = shownText(value);
  if (text::looksLikeFormula(text) && !variant::isNumeric(value)) text.insert(text.begin(), '\'');
  return text::csvQuoted(text);
}

void sendCsvRows(Page& page, const GridState& grid, database::Recordset& rows) {
  constexpr std::size_t kPieceBytes = 64 * 1024;
  std::vector<std::string> fields;
  for (const std::string& caption : grid.definition.captions) fields.push_back(csvField(caption));
  std::string piece = "\xEF\xBB\xBF" + text::csvRecord(fields);
  for (; !rows.atEnd(); rows.moveNext()) {
    fields.clear();
    for (std::size_t i = 1; i <= grid.definition.captions.size(); ++i) {
      fields.push_back(i < rows.fieldCount() ? csvField(rows.value(i)) : std::string());
    }
    piece += text::csvRecord(fields);
    if (piece.size() < kPieceBytes) continue;
    if (!page.response.isClientConnected()) return;
    page.response.binaryWrite(piece);
    page.response.flush();
    piece.clear();
  }
  page.response.binaryWrite(piece);
}

}  // namespace

void sendGridRows(Page& page) {
  const auto grid = gridOf(page);
  if (grid == nullptr) return;
  if (textOf(page, "reload") == "1") grid->forgetCounts();
  const frame::StatementScope scope(page, grid->rights);
  ErrorState err;
  GridRows rows;
  err.run([&] { rows = readRows(page, *grid, requestOf(page, grid->definition)); });
  sendJson(page, err.failed() ? errorJson(statusOf(err.number()), messageOf(err.number()))
                              : rowsJson(rows));
}

void sendGridCsv(Page& page) {
  const auto grid = gridOf(page);
  if (grid == nullptr) return;
  const GridRequest request = requestOf(page, grid->definition);
  const frame::StatementScope scope(page, grid->rights);
  ErrorState err;
  std::optional<database::Lease> connection;
  std::unique_ptr<database::Recordset> rows;
  err.run([&] {
    connection.emplace(frame::borrowConnection(page));
    rows = (*connection)->open(grid->prepared->statement.all(request.filter, request.sort));
  });
  if (err.failed()) {
    return sendJson(page, errorJson(statusOf(err.number()), messageOf(err.number())));
  }
  page.response.setHeader("Content-Type", "text/csv; charset=utf-8");
  page.response.setHeader("Content-Disposition", "attachment; filename=\"list.csv\"");
  sendCsvRows(page, *grid, *rows);
}

}  // namespace tarlo::siblings
