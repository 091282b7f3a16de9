#pragma once
// The data procedures: the road from an operation to the database. One call is one borrowed
// connection and one statement, committed by itself. The connection string is read from
// Application("strConn") at every call. All raise DatabaseError; none of them handles anything. An
// Empty or Null statement is an empty one, and refused by the database. A command type other than
// kCommandText raises error 5. A statement that touches more than page.statements allows raises
// DatabaseError (kForbidden).

#include "frame/page.h"
#include "variant/array.h"

namespace tarlo::frame {

inline constexpr int kCommandText =
    1;  // ADO's adCmdText: what every caller passes as the command type

// A connection to the page's database, for what the procedures below do not offer: reading a few
// rows of many, the catalogue. Give it back soon. Its statements are held to page.statements, as
// they stand when each is run.
database::Lease borrowConnection(Page& page);

// The rows as (column, row), both from 0, or Empty when there are none.
Variant execSQLRows(Page& page, const Variant& sql);
// The first column of the first row; `otherwise` when there are no rows.
Variant firstCell(Page& page, const Variant& sql, const Variant& otherwise = {});
// Runs a statement that is not to be logged. Gives the field NeoID when the text ends in "NeoID"
// (case counts), else Empty.
Variant execSQL(Page& page, const Variant& sql, int commandType = kCommandText);
// As execSQL, and writes the statement to the operation log when it did not fail. A text of more
// than 2000 UTF-16 units is logged as "Batch update", and the caller's variable then holds these
// words too: callers see it and rely on it.
Variant execSQLLogged(Page& page, Variant& sql, int commandType = kCommandText);
// Titles of the statement's columns: index 0 Empty, column k at index k. Opens the statement and
// reads no row.
Variant getSQLFieldNames(Page& page, const Variant& sql);

}  // namespace tarlo::frame
