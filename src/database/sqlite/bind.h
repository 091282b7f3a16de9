#pragma once
// Literals of a statement into the parameters of its translation.

#include <sqlite3.h>

#include "tsql/lex/shape.h"
#include "tsql/translation.h"

namespace tarlo::database {

// How long the literals' texts stay where they are: as long as the rows are read, or only for the
// call, so that SQLite must copy them.
enum class TextLife { WholeRun, Call };

// SQLite's code. Throws StatementError when a literal does not convert.
int bindLiterals(sqlite3_stmt* statement, const tsql::Step& step, const tsql::Shape& shape,
                 TextLife life);

}  // namespace tarlo::database
