#pragma once
// What a scheme yields, read from the statement that was stored with it: titles by asking the
// database, expressions by plain text operations that rely on the shape of compiled statements,
// "select ", expressions each with " as [title]" joined by ",", " from ". A statement of another
// shape is not detected: it gives arrays of the wrong shape, or raises. All are operations.
//
// `isInstance` True takes the frozen version and its own key instead of the scheme or control
// scheme. A pair array has the bounds 2 and m; item i, from 0, is (1, i+1) and (2, i+1), and index
// 0 of either dimension stays Empty.

#include "frame/page.h"

namespace tarlo::metadata {

// The stored statement. Never raises; Null when there is none of that id.
Variant getQuerySQL(Page& page, const Variant& queryid, const Variant& isInstance);

// These three give Null for an unknown id, and raise when the database refuses the statement.

// Column titles: element 0 Empty, column k at k.
Variant getQueryAllTitle(Page& page, const Variant& queryid, const Variant& isInstance);
// Expressions: element 0 Empty, column k at k, and at the end one more element with what stands
// behind the last title. Error 9 when a title does not stand in the list.
Variant getQueryAllCal(Page& page, const Variant& queryid, const Variant& isInstance);
// Pair array of table and column, for statements of plain columns; an expression is cut at its
// first dots. Error 9 for one without a dot.
Variant getQueryAllField(Page& page, const Variant& queryid, const Variant& isInstance);

// The table of the scheme's key field. Never raises; -1 when there is none.
Variant KeyField2TableID(Page& page, const Variant& queryid, const Variant& isInstance);

// What stands behind the first "|||" in the definition of a table control. Never raises; -1 for an
// unknown control, -2 for one of another kind, Empty when the definition has no such part.
Variant getTableListTitle(Page& page, const Variant& controlid, const Variant& isInstance);

// Pair array of table and column for a select list without blanks: the first operand of every item.
// Error 9 when an item has no dot.
Variant SQL2Fields(Page& page, const Variant& SQLstr);

}  // namespace tarlo::metadata
