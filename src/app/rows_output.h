#pragma once
// Rows of a statement on a stream: a table for people, JSON or CSV for programs.

#include <cstddef>
#include <ostream>

#include "app/table.h"
#include "database/recordset.h"

namespace tarlo::app {

enum class RowFormat { Table, JsonText, Csv };

// A value as the table shows it: Null as NULL, numbers to the right.
Cell cellOf(const Variant& value);

// A value as CSV has it: Null is a field with nothing in it, which "" in its quotes is not.
std::string csvField(const Variant& value);

struct RowLimits {
  std::size_t rows = SIZE_MAX;
  std::size_t width = 0;  // of a table, in places; 0 for as wide as it is
};

// Writes the rows from the cursor on, within the limits, and gives their number. A table says how
// many rows it has, and which columns when some do not fit. JSON and CSV hold
// no row; a table holds kMeasuredRows. When the statement fails on the way, what was written stays
// and the DatabaseError goes on: JSON is then not closed, so that nobody takes it for complete.
std::size_t writeRows(std::ostream& out, database::Recordset& rows, RowFormat format,
                      const RowLimits& limits = {});

}  // namespace tarlo::app
