#pragma once
// The eight operations that turn a scheme's strings into its one SELECT statement, one for each
// combination of computed fields (Vir), filter (Fil) and statistics with grouping (Sta). They take
// no decision about which parts a scheme has: definition.h does that for callers.
//
// Results are text. Each raises what its compilers raise. Nothing checks that the statement is
// valid SQL; the database does that when it is first run.

#include "frame/page.h"

namespace tarlo::compile {

Variant getQuery_None(Page& page, const Variant& sTable, const Variant& rel);
Variant getQuery_Vir(Page& page, const Variant& sTable, const Variant& computed,
                     const Variant& rel);
Variant getQuery_Fil(Page& page, const Variant& sTable, const Variant& filter, const Variant& rel);
Variant getQuery_Vir_Fil(Page& page, const Variant& sTable, const Variant& computed,
                         const Variant& filter, const Variant& rel);
Variant getQuery_Sta(Page& page, const Variant& sTable, const Variant& stats, const Variant& group,
                     const Variant& rel);
// A computed field is selected only if a statistics item names it.
Variant getQuery_Vir_Sta(Page& page, const Variant& sTable, const Variant& computed,
                         const Variant& stats, const Variant& group, const Variant& rel);
Variant getQuery_Fil_Sta(Page& page, const Variant& sTable, const Variant& filter,
                         const Variant& stats, const Variant& group, const Variant& rel);
Variant getQuery_Vir_Fil_Sta(Page& page, const Variant& sTable, const Variant& computed,
                             const Variant& filter, const Variant& stats, const Variant& group,
                             const Variant& rel);

}  // namespace tarlo::compile
