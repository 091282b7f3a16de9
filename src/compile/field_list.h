#pragma once
// The clause set of a scheme without statistics: every live field of the main table and of every
// table that a selected relation reaches.

#include "frame/page.h"

namespace tarlo::compile {

// `rel` is the comma-joined list of relation ids. A table that was reached before gets an alias
// made of its name and the index of the row that reaches it again. A relation whose field is gone
// joins its table without a condition. Look-ups that find nothing raise nothing: without a relation
// there is the main table alone, without a main table there are empty brackets.
Variant getQuery_Field_In(Page& page, const Variant& sTable, const Variant& rel);

}  // namespace tarlo::compile
