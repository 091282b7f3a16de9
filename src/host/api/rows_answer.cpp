#include "host/api/resources.h"

#include <fmt/format.h>

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "host/api/api.h"
#include "host/api/json_value.h"
#include "siblings/grid_statement.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/text.h"

namespace tarlo::host {
namespace {

using control::Control;
using siblings::GridFilter;
using siblings::GridSort;
using siblings::GridStatement;

constexpr std::int64_t kMostRows = 1000;
constexpr std::int64_t kUsualRows = 50;
constexpr std::int64_t kMostPages = 1'000'000;
constexpr std::size_t kMostColumns = 200;
constexpr std::ptrdiff_t kMostSearchUnits = 100;
constexpr std::size_t kPieceBytes = 64 * 1024;

std::string valueOf(Page& page, std::string_view key) {
  return variant::spliced(page.request.value(key));
}

// `usual` when the request has no such value. Throws ApiError 400 for anything but a whole number
// within the bounds.
std::int64_t numberOf(Page& page, std::string_view key, std::int64_t usual, std::int64_t most) {
  constexpr std::size_t kMostDigits = 9;
  const std::string text = valueOf(page, key);
  if (text.empty()) return usual;
  const bool isNumber =
      text.size() <= kMostDigits && text.find_first_not_of("0123456789") == std::string::npos;
  const std::int64_t number = isNumber ? std::stoll(text) : 0;
  if (number < 1 || number > most) {
    throw badRequest(fmt::format("{} is a whole number from 1 to {}.", key, most));
  }
  return number;
}

struct RowsRequest {
  std::int64_t page;
  std::int64_t size;
  GridSort sort;
  GridFilter filter;
};

RowsRequest requestOf(Page& page, std::size_t columns) {
  RowsRequest request{
      numberOf(page, "page", 1, kMostPages), numberOf(page, "size", kUsualRows, kMostRows), {}, {}};
  if (!valueOf(page, "sort").empty()) {
    const auto most = static_cast<std::int64_t>(columns);
    request.sort.column = static_cast<std::size_t>(numberOf(page, "sort", 1, most));
    request.sort.descending = valueOf(page, "desc") == "1";
  }
  const std::string search = valueOf(page, "search");
  request.filter.search = text::trim(variant::left(search, kMostSearchUnits));
  for (std::size_t i = 1; i <= columns; ++i) {
    const Variant value = page.request.value(fmt::format("c{}", i));
    if (!value.isEmpty()) request.filter.matches.push_back({i, variant::spliced(value)});
  }
  return request;
}

// What is read: the control's own rows, or those of a cascade's further level, whose last column
// relates it to the level above and is not shown.
struct RowSource {
  std::string sql;
  std::size_t hidden = 0;
  std::vector<siblings::GridMatch> matches;
};

ApiError notUsable() {
  return {409, "not_usable", "The control's statement no longer runs."};
}

RowSource sourceOf(Page& page, const Control& control) {
  if (valueOf(page, "level").empty()) return {control.statement, 0, {}};
  constexpr std::int64_t kMostLevels = 100;
  const auto level = static_cast<std::size_t>(numberOf(page, "level", 1, kMostLevels));
  const auto sql = control::levelStatement(control, level);
  if (!sql) throw notFound("The control has no such level.");
  return {*sql, 1, {{3, valueOf(page, "parent")}}};
}

// The titles of the statement, under the names that the control gives its columns.
Json columnsOf(const std::vector<std::string>& titles, std::size_t count, const Control& control) {
  Json columns = Json::array();
  for (std::size_t i = 0; i < count; ++i) {
    const bool isNamed = i > 0 && i <= control.titles.size();
    columns.push_back(isNamed ? control.titles[i - 1] : titles[i]);
  }
  return columns;
}

// A row more than the page has is read, and not sent, to know whether more follow.
void sendRows(Visit& visit, database::Recordset& rows, const Json& columns,
              const RowsRequest& request) {
  std::string piece = fmt::format("{{\"columns\":{},\"rows\":[", jsonText(columns));
  std::int64_t count = 0;
  for (; !rows.atEnd() && count < request.size; rows.moveNext(), ++count) {
    Json cells = Json::array();
    for (std::size_t i = 0; i < columns.size(); ++i) cells.push_back(toJson(rows.value(i)));
    piece.append(count == 0 ? "" : ",").append(jsonText(cells));
    if (piece.size() < kPieceBytes) continue;
    visit.response.binaryWrite(piece);
    visit.response.flush();
    if (!visit.response.isClientConnected()) return;
    piece.clear();
  }
  piece += fmt::format("],\"page\":{},\"size\":{},\"more\":{}}}\n", request.page, request.size,
                       !rows.atEnd());
  visit.response.binaryWrite(piece);
}

// What is stored may be anything; only one that gives rows is given to forms.
GridStatement statementOf(Visit& visit, const std::string& sql, tsql::Catalogue& catalogue) {
  try {
    return {sql, "", kMostColumns, catalogue};
  } catch (const database::DatabaseError& error) {
    visit.refusals.refused(sql, error.description());
    throw notUsable();
  }
}

// The rows of the page. When they cannot be read because a list's statement as a whole does not
// run, the control is told to be unusable. Asked over the connection that is borrowed already.
std::unique_ptr<database::Recordset> openRows(const Control& control,
                                              database::Connection& connection,
                                              const std::string& sql) {
  try {
    return connection.open(sql);
  } catch (const database::DatabaseError&) {
    if (control.kind != control::ControlKind::List) throw;
    try {
      connection.execute(control.statement);
    } catch (const database::DatabaseError&) {
      throw notUsable();
    }
    throw;
  }
}

}  // namespace

void answerRows(Visit& visit, const Control& control) {
  const RowSource source = sourceOf(visit.page, control);
  if (source.sql.empty()) throw notUsable();
  const frame::StatementScope scope(visit.page, frame::kDesignersRights);
  database::Lease connection = frame::borrowConnection(visit.page);
  const GridStatement statement = statementOf(visit, source.sql, connection->catalogue());
  const std::size_t count = statement.titles().size() - source.hidden;
  RowsRequest request = requestOf(visit.page, count);
  request.filter.matches.insert(request.filter.matches.end(), source.matches.begin(),
                                source.matches.end());
  const std::int64_t offset = (request.page - 1) * request.size;
  const auto rows = openRows(
      control, *connection, statement.page(request.filter, request.sort, offset, request.size + 1));
  visit.response.setHeader("Content-Type", "application/json; charset=utf-8");
  sendRows(visit, *rows, columnsOf(statement.titles(), count, control), request);
}

}  // namespace tarlo::host
