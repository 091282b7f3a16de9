#pragma once
// Which statements may share a batch. Few may, so that a value that breaks out of its quotes cannot
// add a statement of its own.

#include "tsql/ast/statement.h"
#include "tsql/lex/keyword.h"

namespace tarlo::tsql {

// Whether a statement begins with this word, so that the one before it may end without a semicolon.
bool beginsStatement(Keyword keyword);

// Refuses the last statement of the batch when it may not stand behind the others. `complete`: the
// text ends here, so a batch that wants more is refused too.
void checkBatchForm(const ast::Batch& batch, bool complete);

}  // namespace tarlo::tsql
