#pragma once
// Small look-ups in the data dictionary: names, fields and keys of tables, relations between two
// tables. All are operations of the component.
//
// Rows are the (column, row) table of execSQLRows. Ids go into the statement as they are, a Null or
// Empty one as nothing; names go in between single quotes and are not escaped.

#include "frame/page.h"

namespace tarlo::metadata {

// These three never raise: a failed statement and an empty answer both give Null.

// Ids of the table's live fields, one column.
Variant getAllFieldID_Query(Page& page, const Variant& tableid);
// Physical name and display name of a live table.
Variant getTableName_Query(Page& page, const Variant& tableid);
// Columns of a live field of a live table: 0 table name, 1 table display name, 2 column name,
// 3 field display name, 4 whether the kind is one of the special ones (1, 10 to 14; 1 or 0),
// 5 table id, 6 whether it is the key field (1 or 0).
Variant getFieldName_Query(Page& page, const Variant& fieldid);

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

}  // namespace tarlo::metadata
