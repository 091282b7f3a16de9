#pragma once
// The clause set of a scheme with statistics: the select items are the statistics items alone, and
// tables are joined only as far as these and the grouping need them.

#include "frame/page.h"

namespace tarlo::compile {

// Shares no rule with the field list of schemes without statistics: no aliases, one hop only (a
// table reached in two hops is joined straight to the main table), no deletion flags but the main
// table's, and joined tables stand in the FROM list without brackets. Always an array. Raises 9 for
// an item without a code or a computed field that does not exist, 13 for a token that is no number,
// for a field that is not found and for a table that no relation reaches, 5 for a computed field
// without a name. `computed` is "" for schemes that have none.
Variant Query_getStats(Page& page, const Variant& sTable, const Variant& stats,
                       const Variant& computed, const Variant& group, const Variant& rel);

}  // namespace tarlo::compile
