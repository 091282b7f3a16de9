#pragma once
// A grid as the browser gets it: its first page as a table that shows at once, its rows as JSON
// later.

#include <string>
#include <string_view>

#include "siblings/grid_definition.h"
#include "siblings/grid_rows.h"

namespace tarlo::siblings {

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
