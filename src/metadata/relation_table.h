#pragma once
// The search for the ways in which selected relations lead from a main table to other tables.

#include "frame/page.h"

namespace tarlo::metadata {

// One row of ids for each way of reaching a table, at most two hops from the main table:
//
//   column  direct row                     two-hop row
//   0       the other table                the far table
//   1       its field                      its field
//   2       the main table's field         the main table's field of the near relation
//   3       as column 0                    the intermediate table
//   4       as column 1                    its field of the far relation
//   5       0                              its field of the near relation
//
// `rel` is the comma-joined list of relation ids. Null when nothing is reached and when a statement
// failed, as every statement does when `rel` is empty; never raises. The database decides the order
// of the rows.
Variant getRelationTable_Query(Page& page, const Variant& tableid, const Variant& rel);

}  // namespace tarlo::metadata
