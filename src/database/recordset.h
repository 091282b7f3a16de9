#pragma once
// The rows of one statement, forward only, in the shape of an ADO recordset. It borrows the
// connection that it came from: close it, or let it go, before the connection is used again or
// given back.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/resolve/resolver.h"
#include "variant/array.h"
#include "variant/runtime_error.h"

namespace tarlo::database {

class Recordset {
 public:
  virtual ~Recordset() = default;

  virtual std::size_t fieldCount() const = 0;
  // Title of field i from 0, as the statement gives it; "" for an expression without a title.
  // Titles may repeat.
  virtual const std::string& fieldName(std::size_t i) const = 0;
  // Whether a row stands at the cursor. The first row has been fetched when the recordset is made.
  virtual bool atEnd() const = 0;
  // Value of field i of the current row: Null, Int32 (Int64 when it does not fit), Double, Decimal,
  // Text or Date by the kind of the column. Error 3021 when at the end, error 3265 when there is no
  // such field.
  virtual Variant value(std::size_t i) const = 0;
  // Fetches the next row. Throws DatabaseError.
  virtual void moveNext() = 0;
  // Value by title, without regard to case: the first match; error 3265 when there is none.
  Variant value(std::string_view title) const;

  // All rows from the cursor on, as (column, row); Empty when there are none. At most `maxRows`.
  Variant getRows(std::size_t maxRows = SIZE_MAX);

 protected:
  // Appends the cells of at most `maxRows` rows, row by row, and moves behind them. Engines may do
  // it in one piece, as one call against the command time-out.
  virtual void fetchRows(std::vector<Variant>& cells, std::size_t maxRows);
};

// Error 3021: no row stands at the cursor.
RuntimeError noCurrentRow();
// Error 3265: there is no field of that number.
RuntimeError noSuchField();

}  // namespace tarlo::database
