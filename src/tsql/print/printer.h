#pragma once
// Resolved tree to the text of an engine.

#include "tsql/ast/statement.h"
#include "tsql/translation.h"

namespace tarlo::tsql {

// Adds the steps of the batch to `translation` and lists its fixed literals. Throws StatementError
// (Unsupported) for what the engine cannot be given faithfully.
void printFor(Dialect dialect, const ast::Batch& batch, Catalogue& catalogue,
              Translation& translation);

}  // namespace tarlo::tsql
