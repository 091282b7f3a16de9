#include "siblings/grid_rows.h"

#include <algorithm>

#include "database/error.h"
#include "frame/data.h"
#include "variant/convert.h"

namespace tarlo::siblings {
namespace {

std::vector<GridRow> readAt(database::Connection& connection, const std::string& sql,
                            std::size_t shown, database::RowBudget* budget) {
  std::vector<GridRow> rows;
  const auto set = connection.open(sql);
  for (; !set->atEnd(); set->moveNext()) {
    // As the scripts send it back: dates and numbers in full.
    GridRow row{variant::spliced(set->value(0)), {}};
    for (std::size_t i = 1; i <= shown; ++i) {
      row.cells.push_back(i < set->fieldCount() ? shownText(set->value(i)) : std::string());
    }
    std::size_t bytes = sizeof(GridRow) + row.id.size();
    for (const std::string& cell : row.cells) bytes += sizeof(std::string) + cell.size();
    if (budget != nullptr) budget->take(bytes);
    rows.push_back(std::move(row));
  }
  return rows;
}

std::int64_t countOf(database::Connection& connection, GridState& grid, const GridFilter& filter) {
  const std::string sql = grid.prepared->statement.count(filter);
  if (const auto known = grid.knownCount(sql)) return *known;
  const std::int64_t count = variant::toInt64(connection.open(sql)->value(0));
  grid.rememberCount(sql, count);
  return count;
}

}  // namespace

bool GridRequest::isPlain() const {
  const auto isNone = [](const std::string& condition) { return condition.empty(); };
  return filter.search.empty() && sort.column == 0 &&
         std::ranges::all_of(filter.conditions, isNone);
}

std::string shownText(const Variant& value) {
  std::string text = variant::spliced(value);
  constexpr std::string_view kMidnight = " 00:00:00";
  const bool isDay = value.state() == variant::State::Date && text.ends_with(kMidnight);
  if (isDay) text.resize(text.size() - kMidnight.size());
  return text;
}

GridRows readRows(Page& page, GridState& grid, const GridRequest& request) {
  const GridDefinition& definition = grid.definition;
  const PreparedGrid& prepared = *grid.prepared;
  const std::int64_t size = definition.rowsPerPage();
  const std::size_t shown = definition.captions.size();
  database::Lease connection = frame::borrowConnection(page);
  GridRows result;
  result.page = definition.multiPage ? std::max<std::int64_t>(1, request.page) : 1;
  const bool isFirst = request.isPlain();
  const auto read = [&] {
    const std::int64_t offset = (result.page - 1) * size;
    result.rows = readAt(*connection,
                         isFirst && offset == 0
                             ? prepared.firstPage
                             : prepared.statement.page(request.filter, request.sort, offset, size),
                         shown, page.statements.budget);
  };
  read();
  const auto got = static_cast<std::int64_t>(result.rows.size());
  // A page that is not full is the last one, so it says how many rows there are.
  if (got < size && (got > 0 || result.page == 1)) {
    result.total = (result.page - 1) * size + got;
    return result;
  }
  result.total = countOf(*connection, grid, request.filter);
  if (got > 0) return result;
  result.page = std::max<std::int64_t>(1, (result.total + size - 1) / size);
  read();
  return result;
}

std::string_view messageOf(int errorNumber) {
  switch (errorNumber) {
    case database::kTimeout:
      return "查询时间过长，请缩小查询范围后再试。";
    case database::kConnectionFailed:
      return "暂时无法连接数据库，请稍后再试。";
    case database::kTooManyRows:
      return "结果太大，请缩小查询范围后再试。";
    case database::kNoRoomForRows:
      return "服务器繁忙，请稍后再试。";
    case database::kForbidden:
      return "列表的查询语句用到了不允许查询的数据表。";
    default:
      return "列表的查询语句无法执行，请与系统管理员联系。";
  }
}

int statusOf(int errorNumber) {
  switch (errorNumber) {
    case database::kTimeout:
    case database::kConnectionFailed:
    case database::kNoRoomForRows:
      return 503;
    case database::kTooManyRows:
      return 413;
    case database::kForbidden:
      return 403;
    default:
      return 500;
  }
}

}  // namespace tarlo::siblings
