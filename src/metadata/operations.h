#pragma once
// The operations of the metadata services, as pages and other components call them. Behind most of
// them stands a typed function of dictionary.h or stored_schemes.h, which the house calls instead.
//
// Rows are (column, row) tables. Ids go into the statement as they are, a Null or Empty one as
// nothing; names go in between single quotes and are not escaped. `isInstance` True takes the
// frozen version and its own key instead of the scheme or control scheme. A pair array has the
// bounds 2 and m; item i, from 0, is (1, i+1) and (2, i+1), and index 0 of either dimension stays
// Empty.

#include "frame/page.h"

namespace tarlo::metadata {

// --- The dictionary. These four never raise: a failed statement and an empty answer give Null.

// Ids of the table's live fields, one column.
Variant getAllFieldID_Query(Page& page, const Variant& tableid);
// Physical name and display name of a live table.
Variant getTableName_Query(Page& page, const Variant& tableid);
// Columns of a live field of a live table: 0 table name, 1 table display name, 2 column name,
// 3 field display name, 4 whether the kind is one of the special ones (1, 10 to 14; 1 or 0),
// 5 table id, 6 whether it is the key field (1 or 0).
Variant getFieldName_Query(Page& page, const Variant& fieldid);
// One row of ids for each way of reaching a table: the members of Path, in their order.
Variant getRelationTable_Query(Page& page, const Variant& tableid, const Variant& rel);

// These three raise DatabaseError; Null when there are no rows.

// Id, column name and display name of the table's key fields, deleted ones included.
Variant getZembraID(Page& page, const Variant& tableid);
// Main field and relation field of the relations that have TableID1 at the relation end and
// TableID2 at the main end; the other direction is not looked at.
Variant get2TableRel(Page& page, const Variant& TableID1, const Variant& TableID2);
// Ids of the tables at the relation end of a table's relations.
Variant getRelTableID(Page& page, const Variant& tablename);

// These two never raise; -1 when nothing is found.

// Display name of a field given as [table].[column] or table.column.
Variant getFieldDesc(Page& page, const Variant& fieldname);
// Display name of a table. The caller's variable is trimmed and loses its brackets.
Variant getTableDesc(Page& page, Variant& tablename);

// --- What is stored with a scheme.

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
// [table].[column] of the scheme's key. Never raises; -1 when there is none.
Variant getQueryKeyField(Page& page, const Variant& queryid, const Variant& isInstance);
// The scheme's selected relations, -1 for an unknown scheme. Raises DatabaseError.
Variant GetQuerySelRel(Page& page, const Variant& queryid, const Variant& isInstance);
// Pair array of table and column for a select list without blanks: the first operand of every item.
// Error 9 when an item has no dot.
Variant SQL2Fields(Page& page, const Variant& SQLstr);
// Pair array of table and column of a statement's plain columns; error 9 for one without a dot.
Variant getQueryField(Page& page, const Variant& sql);
// Columns whose expression holds an operator or a function of the wizard's list, as pairs of the
// column's index, from 0, and its title; a hyphen in a name counts as an operator. Never raises; -1
// when there is none.
Variant getVirtualFields(Page& page, const Variant& queryid, const Variant& isInstance);

// --- Versions, and the schemes of a table. All raise DatabaseError. Deleted schemes count.

// The key of the version that is valid, as freeze gives it; -1 for an unknown scheme.
Variant CopyQuery(Page& page, const Variant& queryid);
// Key of the version row of control scheme `qfid` under scheme version `queryid`, -1 when there is
// none.
Variant verID2ZembraID(Page& page, const Variant& qfid, const Variant& queryid);
// The ids of the schemes over the table, one column; Empty when there are none.
Variant getAllQueryid(Page& page, const Variant& tableid);
Variant DecTableinUse(Page& page, const Variant& tableid);  // whether there are any

// --- Control schemes. A control has a kind, 1 drop-down, 2 cascade, 3 list, and a definition,
// parts joined by "|||":
//   1  statement, field id
//   2  statement, levels, field id
//   3  statement, titles

// The whole definition of a drop-down; Null for another kind and for an unknown control. Raises
// DatabaseError.
Variant getControlSQL1(Page& page, const Variant& controlid, const Variant& isInstance);
// The statement of a control that is asked for as kind `i`: for 1 alone, for 2 with the levels and
// for 3 with the titles behind "|||". -1 for an unknown control, -2 for one of another kind, which
// is not looked at when 3 is asked for. A list whose statement no longer runs gives Empty. Never
// raises. Asking for a list runs its statement, and a run that works is in the operation log; a
// statement too long for the log is answered with the log's words in its place.
Variant getControlSQL(Page& page, const Variant& controlid, const Variant& i,
                      const Variant& isInstance);

// These never raise; -1 when there is none.

// [table].[column] of the field that the control is bound to.
Variant Control2Field(Page& page, const Variant& controlid, const Variant& isInstance);
// Its id; 0 for a control that is bound to none.
Variant Control2Fieldid(Page& page, const Variant& controlid, const Variant& isInstance);
// What stands behind the first "|||" in the QF_CField of a list; -2 for a control of another kind,
// Empty when it has no such part.
Variant getTableListTitle(Page& page, const Variant& controlid, const Variant& isInstance);
// Pairs of index, from 0, and title of the columns of a list's version that are fields of the
// dictionary, named without brackets; a column in brackets is not found. Whether a field's own kind
// is one of those that can be calculated with is not looked at, only that there are such kinds:
// both deliberate. `isInstance` is not used.
Variant getCalFieldOrder(Page& page, const Variant& controlid, const Variant& isInstance);

// Rows from 1, columns 1 to 5: field id, display name, kind, control id, control name; index 0 of
// either dimension stays Empty. `controlType` "": the scheme's fields of the table `tablename`;
// 1 or 2: the fields that the scheme's controls of this kind are bound to; 3: its lists, without
// fields. -1 when there is none, Empty for another kind. A display name with a comma moves what
// follows it one column on. Raises DatabaseError, and what getQueryAllField raises.
Variant getQueryFields(Page& page, const Variant& queryid, const Variant& tablename,
                       const Variant& controlType, const Variant& isInstance);

}  // namespace tarlo::metadata
