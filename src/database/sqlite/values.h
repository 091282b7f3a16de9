#pragma once
// Values of result columns as variants, by the kind that the front end gave the column.

#include <sqlite3.h>

#include "tsql/type.h"
#include "variant/variant.h"

namespace tarlo::database {

// Column i of the statement's row. What does not fit the kind (a file of other programs may hold
// anything) is given as it is stored.
Variant readColumn(sqlite3_stmt* statement, int i, tsql::Type type);

// The number with at most `scale` digits behind the point, half away from zero, no trailing zeros.
variant::Decimal roundedDecimal(double number, int scale);

}  // namespace tarlo::database
