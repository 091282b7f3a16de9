#include "database/recordset.h"

#include <algorithm>

#include "database/error.h"
#include "text/fold.h"

namespace tarlo::database {
namespace {

constexpr int kNoCurrentRow = 3021;

}  // namespace

RuntimeError noCurrentRow() {
  return RuntimeError(kNoCurrentRow, "The recordset has no current row.", "database");
}

RuntimeError noSuchField() {
  return RuntimeError(kNoSuchField, "The recordset has no field of that number.", "database");
}

Variant Recordset::value(std::string_view title) const {
  for (std::size_t i = 0; i < fieldCount(); ++i) {
    if (text::equalsNoCase(fieldName(i), title)) return value(i);
  }
  throw RuntimeError(kNoSuchField, "The recordset has no field of that name.", "database");
}

Variant Recordset::getRows(std::size_t maxRows) {
  if (atEnd() || maxRows == 0) return {};
  std::vector<Variant> cells;
  fetchRows(cells, maxRows);
  const auto columns = static_cast<std::ptrdiff_t>(fieldCount());
  const auto rows = static_cast<std::ptrdiff_t>(cells.size()) / columns;
  Array table({columns - 1, rows - 1});
  std::move(cells.begin(), cells.end(), table.elements().begin());
  return Variant(std::move(table));
}

void Recordset::fetchRows(std::vector<Variant>& cells, std::size_t maxRows) {
  const std::size_t columns = fieldCount();
  for (std::size_t row = 0; row < maxRows && !atEnd(); ++row) {
    for (std::size_t i = 0; i < columns; ++i) cells.push_back(value(i));
    moveNext();
  }
}

}  // namespace tarlo::database
