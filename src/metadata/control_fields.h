#pragma once
// What a scheme offers to controls: its fields, the controls on it, and which of its columns are
// calculated. All are operations. Pair arrays are those of introspection.h.

#include "frame/page.h"

namespace tarlo::metadata {

// Rows from 1, columns 1 to 5: field id, display name, kind, control id, control name; index 0 of
// either dimension stays Empty. `controlType` "": the scheme's fields of the table `tablename`;
// 1 or 2: the fields that the scheme's controls of this kind are bound to; 3: its lists, without
// fields. -1 when there is none, Empty for another kind. A display name with a comma moves what
// follows it one column on. Raises DatabaseError, and what getQueryAllField raises.
Variant getQueryFields(Page& page, const Variant& queryid, const Variant& tablename,
                       const Variant& controlType, const Variant& isInstance);

// Pair array of table and column of a statement's plain columns; error 9 for one without a dot.
Variant getQueryField(Page& page, const Variant& sql);

// These never raise; -1 when there is none. Both give pairs of a column's index, from 0, and its
// title.

// Columns of a list's version that are fields of the dictionary, named without brackets; a column
// in brackets is not found. Whether a field's own kind is one of those that can be calculated with
// is not looked at, only that there are such kinds: both deliberate. `isInstance` is not used.
Variant getCalFieldOrder(Page& page, const Variant& controlid, const Variant& isInstance);
// Columns whose expression holds an operator or a function of the wizard's list; a hyphen in a name
// counts as an operator.
Variant getVirtualFields(Page& page, const Variant& queryid, const Variant& isInstance);

}  // namespace tarlo::metadata
