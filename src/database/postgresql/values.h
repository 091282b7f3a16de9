#pragma once
// Values of result columns as variants, by the kind that the front end gave the column.

#include <libpq-fe.h>

#include "tsql/type.h"
#include "variant/variant.h"

namespace tarlo::database {

// Field i of a row of a result in text form. What does not fit the kind is given as text.
Variant readField(const PGresult* result, int row, int i, tsql::Type type);

// A decimal as the server writes it, with at most `scale` digits behind the point, half away from
// zero, no trailing zeros. Digits only, with sign and point.
variant::Decimal decimalOf(std::string_view text, int scale);

}  // namespace tarlo::database
