#include "siblings/grid_drawing.h"

#include <fmt/format.h>

#include "frame/data.h"
#include "siblings/grid_markup.h"
#include "siblings/grid_rows.h"
#include "siblings/grid_state.h"
#include "variant/convert.h"
#include "variant/error_state.h"
#include "variant/text.h"

namespace tarlo::siblings {
namespace {

GridStatement prepare(Page& page, const GridDefinition& grid) {
  database::Lease connection = borrowFor(page);
  // Without captions all columns are shown.
  const std::size_t shown = grid.captions.empty() ? SIZE_MAX : grid.captions.size();
  return GridStatement(grid.sql, grid.orderBy, shown, connection->catalogue());
}

std::string quoted(std::string_view text) {
  return "'" + variant::replace(text, "'", "''") + "'";
}

// One row for each grid that a session draws. Beyond the bound the session's newest row is written
// again and no older one, since readers take the row with the highest number.
void noteDrawn(Page& page, const std::string& sql, const std::string& ordered) {
  constexpr int kMostRowsOfSession = 20;
  const std::string session = quoted(page.session.id());
  const Variant kept =
      frame::execSQLRows(page,
                         "select count(*),max(TarloTable_ID) from Zembra_Temp_TarloTable "
                         "where TarloTable_SessionID = " +
                             session);
  const bool isFull = variant::toInt32(kept.array().at(0, 0)) >= kMostRowsOfSession;
  frame::execSQL(
      page, isFull
                ? fmt::format("update Zembra_Temp_TarloTable set TarloTable_SQLString = {},"
                              "TarloTable_SQLString2 = {} where TarloTable_ID = {}",
                              quoted(sql), quoted(ordered), variant::spliced(kept.array().at(1, 0)))
                : fmt::format("insert into Zembra_Temp_TarloTable (TarloTable_SessionID,"
                              "TarloTable_SQLString,TarloTable_SQLString2) values ({},{},{})",
                              session, quoted(sql), quoted(ordered)));
}

}  // namespace

std::string drawGrid(Page& page, GridDefinition grid) {
  ErrorState err;
  DrawnGrid drawn;
  std::shared_ptr<GridState> state;
  std::string ordered;
  err.run([&] {
    GridStatement statement = prepare(page, grid);
    if (grid.captions.empty()) {
      const auto& titles = statement.titles();
      grid.captions.assign(titles.begin() + 1, titles.end());
    }
    if (!variant::trim(grid.orderBy).empty()) ordered = statement.all({}, {});
    state = std::make_shared<GridState>(grid, std::move(statement));
    drawn.rows = readRows(page, *state, {});
  });
  // First, since a session may have no id before it has a value.
  if (state != nullptr) drawn.key = SessionGrids::of(page)->add(std::move(state));
  if (err.failed()) {
    drawn.error = messageOf(err.number());
  } else {
    err.run([&] { noteDrawn(page, grid.sql, ordered); });
  }
  return gridMarkup(grid, drawn);
}

}  // namespace tarlo::siblings
