#pragma once
// What a form asks of a control scheme at run time: the statement that fills it, and the field that
// it is bound to. All are operations.
//
// A control has a kind, 1 drop-down, 2 cascade, 3 list, and a definition, parts joined by "|||":
//   1  statement, field id
//   2  statement, levels, field id
//   3  statement, titles
// `isInstance` True takes the frozen version by its own key.

#include "frame/page.h"

namespace tarlo::metadata {

// The whole definition of a drop-down; Null for another kind and for an unknown control. Raises
// DatabaseError.
Variant getControlSQL1(Page& page, const Variant& controlid, const Variant& isInstance);

// The statement of a control that is asked for as kind `i`: for 1 alone, for 2 with the levels and
// for 3 with the titles behind "|||". -1 for an unknown control, -2 for one of another kind, which
// is not looked at when 3 is asked for. A list whose statement no longer runs gives Empty. Never
// raises. Asking for a list runs its statement, and a run that works is in the operation log.
Variant getControlSQL(Page& page, const Variant& controlid, const Variant& i,
                      const Variant& isInstance);

// These never raise; -1 when there is none.

// [table].[column] of the field that the control is bound to.
Variant Control2Field(Page& page, const Variant& controlid, const Variant& isInstance);
// Its id; 0 for a control that is bound to none.
Variant Control2Fieldid(Page& page, const Variant& controlid, const Variant& isInstance);
// [table].[column] of the scheme's key.
Variant getQueryKeyField(Page& page, const Variant& queryid, const Variant& isInstance);

// The scheme's selected relations, -1 for an unknown scheme. Raises DatabaseError.
Variant GetQuerySelRel(Page& page, const Variant& queryid, const Variant& isInstance);

}  // namespace tarlo::metadata
