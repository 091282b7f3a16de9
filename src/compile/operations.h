#pragma once
// The operations of the statement compiler, as pages and other components call them: the strings of
// a definition come as arguments. definition.h and clauses.h have the typed functions behind them,
// and what these raise. A clause set is an array with bounds 0 to 3: element 0 Empty, 1 the select
// list, 2 the FROM list, 3 the conditions. Where an argument must be text, Null is error 94.

#include "frame/page.h"

namespace tarlo::compile {

// One for each combination of computed fields (Vir), filter (Fil) and statistics with grouping
// (Sta); they take no decision about which parts a scheme has.
Variant getQuery_None(Page& page, const Variant& mainTable, const Variant& relations);
Variant getQuery_Vir(Page& page, const Variant& mainTable, const Variant& computed,
                     const Variant& relations);
Variant getQuery_Fil(Page& page, const Variant& mainTable, const Variant& filter,
                     const Variant& relations);
Variant getQuery_Vir_Fil(Page& page, const Variant& mainTable, const Variant& computed,
                         const Variant& filter, const Variant& relations);
Variant getQuery_Sta(Page& page, const Variant& mainTable, const Variant& statistics,
                     const Variant& grouping, const Variant& relations);
Variant getQuery_Vir_Sta(Page& page, const Variant& mainTable, const Variant& computed,
                         const Variant& statistics, const Variant& grouping,
                         const Variant& relations);
Variant getQuery_Fil_Sta(Page& page, const Variant& mainTable, const Variant& filter,
                         const Variant& statistics, const Variant& grouping,
                         const Variant& relations);
Variant getQuery_Vir_Fil_Sta(Page& page, const Variant& mainTable, const Variant& computed,
                             const Variant& filter, const Variant& statistics,
                             const Variant& grouping, const Variant& relations);

// Clause sets: fieldListClauses and statisticsClauses. `computed` is "" for schemes that have none.
Variant getQuery_Field_In(Page& page, const Variant& mainTable, const Variant& relations);
Variant Query_getStats(Page& page, const Variant& mainTable, const Variant& statistics,
                       const Variant& computed, const Variant& grouping, const Variant& relations);

// Texts: computedItems, plainFilter, filterWithComputed, groupBy, groupByWithComputed.
Variant Query_getVirtual(Page& page, const Variant& computed);
Variant Query_getfilterNoVir(Page& page, const Variant& filter);
Variant Query_getfilter(Page& page, const Variant& filter, const Variant& computed);
Variant Query_getGroupbyNoVir(Page& page, const Variant& grouping);
Variant Query_getGroupby(Page& page, const Variant& grouping, const Variant& computed);

// Compiles every scheme over the table again, deleted ones included, runs the statement once, and
// stores it with a new modification date. A scheme whose statement fails keeps the one it has.
// Never raises. The result is the outcome of the last scheme alone, False when there is none.
// Control schemes are left as they are.
Variant UpdateQuery(Page& page, const Variant& tableid);

}  // namespace tarlo::compile
