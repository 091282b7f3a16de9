#include "siblings/grid_drawing.h"

#include <fmt/format.h>

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "siblings/grid_markup.h"
#include "siblings/grid_rows.h"
#include "siblings/grid_state.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::siblings {
namespace {

using text::sqlText;

std::shared_ptr<const PreparedGrid> prepare(Page& page, const SessionGrids& grids,
                                            const GridDefinition& grid) {
  if (auto prepared = grids.preparedFor(grid)) return prepared;
  database::Lease connection = frame::borrowConnection(page);
  return std::make_shared<PreparedGrid>(grid, connection->catalogue());
}

// One row for each list that a session draws; one that is drawn again at once keeps its row. Beyond
// the bound the session's newest row is written again and no older one, since readers take the row
// with the highest number.
void noteDrawn(Page& page, const std::string& sql, const std::string& ordered) {
  const frame::StatementScope scope(page,
                                    {.reads = {}, .writes = {database::TableGroup::DrawnGrids}});
  const frame::DispensableScope dispensable(page);
  constexpr int kMostRowsOfSession = 20;
  const std::string session = sqlText(page.session.id());
  const Variant kept =
      frame::execSQLRows(page,
                         "select count(*),max(TarloTable_ID) from Zembra_Temp_TarloTable "
                         "where TarloTable_SessionID = " +
                             session);
  const bool isFull = variant::toInt32(kept.array().at(0, 0)) >= kMostRowsOfSession;
  frame::execSQL(
      page,
      isFull ? fmt::format("update Zembra_Temp_TarloTable set TarloTable_SQLString = {},"
                           "TarloTable_SQLString2 = {} where TarloTable_ID = {}",
                           sqlText(sql), sqlText(ordered), variant::spliced(kept.array().at(1, 0)))
             : fmt::format("insert into Zembra_Temp_TarloTable (TarloTable_SessionID,"
                           "TarloTable_SQLString,TarloTable_SQLString2) values ({},{},{})",
                           session, sqlText(sql), sqlText(ordered)));
}

}  // namespace

std::string drawGrid(Page& page, GridDefinition grid) {
  // A page without a statement has nothing to list: its grid is empty, and not broken.
  if (text::trim(grid.sql).empty()) return gridMarkup(grid, {});
  ErrorState err;
  DrawnGrid drawn;
  std::shared_ptr<GridState> state;
  const std::shared_ptr<SessionGrids> grids = SessionGrids::of(page);
  err.run([&] {
    auto prepared = prepare(page, *grids, grid);
    if (grid.captions.empty()) {
      const auto& titles = prepared->statement.titles();
      grid.captions.assign(titles.begin() + 1, titles.end());
    }
    state = std::make_shared<GridState>(page, grid, std::move(prepared));
    drawn.rows = readRows(page, *state, {});
  });
  if (state != nullptr) drawn.key = grids->add(state);
  if (err.failed()) {
    drawn.error = messageOf(err.number());
  } else if (grids->noteDrawn(state->prepared)) {
    err.run([&] { noteDrawn(page, grid.sql, state->prepared->ordered); });
  }
  return gridMarkup(grid, drawn);
}

}  // namespace tarlo::siblings
