#pragma once
// Rows of a statement on a stream: a table for people, JSON or CSV for programs.

#include <cstddef>
#include <ostream>

#include "app/table.h"
#include "database/recordset.h"

namespace tarlo::app {

enum class RowFormat { Table, Json, Csv };

// A value as the table shows it: Null as NULL, numbers to the right.
Cell cellOf(const Variant& value);

// Writes the rows from the cursor on, at most `maxRows`, and gives their number. JSON and CSV hold
// no row; a table holds kMeasuredRows. When the statement fails on the way, what was written stays
// and the DatabaseError goes on: JSON is then not closed, so that nobody takes it for complete.
std::size_t writeRows(std::ostream& out, database::Recordset& rows, RowFormat format,
                      std::size_t maxRows = SIZE_MAX);

}  // namespace tarlo::app
