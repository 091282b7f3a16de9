#pragma once
// The " group by " text of a scheme with statistics.

#include <string>

#include "frame/page.h"

namespace tarlo::compile {

// Both give "" for an empty (or blank, or Null) grouping, otherwise " group by " and the fields
// that were found, comma-joined; with none found the statement ends there and the database refuses
// it.

// Dictionary fields only. Raises DatabaseError for a token that is no number.
Variant Query_getGroupbyNoVir(Page& page, const Variant& group);

// With computed fields, whose expressions are resolved. Tokens are 16-bit numbers here and only
// here: error 6 for an id above 32767, 13 for a token that is no number, 9 for a computed field
// that does not exist.
Variant Query_getGroupby(Page& page, const Variant& group, const Variant& computed);

// The tokens of a grouping: none when it is blank or Null.
std::string trimmedGrouping(const Variant& group);

}  // namespace tarlo::compile
