#pragma once
// One page of a grid: read from the database, and as the browser gets it: as a table that shows at
// once, as JSON later.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/database.h"
#include "siblings/grid_state.h"

namespace tarlo::siblings {

struct GridRequest {
  GridFilter filter;
  GridSort sort;
  std::int64_t page = 1;

  bool isPlain() const;  // no view, no search, the grid's own order
};

struct GridRow {
  std::string id;
  std::vector<std::string> cells;  // of the shown columns, as plain text
};

struct GridRows {
  std::int64_t total = 0;
  std::int64_t page = 1;  // the one that was read: the last one where a later was asked for
  std::vector<GridRow> rows;
};

// A value as the grid shows it: Null as "", a date without the time of midnight.
std::string shownText(const Variant& value);

// Raises DatabaseError.
GridRows readRows(Page& page, GridState& grid, const GridRequest& request);

// What went wrong, in words for the people who look at the grid: by the number of a run-time error.
std::string_view messageOf(int errorNumber);
// The same as a status that reads as HTTP's.
int statusOf(int errorNumber);

// What a drawn grid begins with.
struct DrawnGrid {
  std::string key;    // in the session; "" when the statement was refused
  std::string error;  // a message in the place of rows; "" for none
  GridRows rows;
};

// The table, and the script that makes the variable of the grid's id.
std::string gridMarkup(const GridDefinition& grid, const DrawnGrid& drawn);

// {"ok":true,"total":..,"page":..,"rows":[{"id":..,"cells":[markup,..]},..]}
std::string rowsJson(const GridRows& rows);

// {"ok":false,"status":..,"error":..}; the status reads as HTTP's.
std::string errorJson(int status, std::string_view message);

}  // namespace tarlo::siblings
