#pragma once
// Names, kinds and rules. Annotates a parsed batch in place against a catalogue, or refuses it as
// SQL Server would.
//
// Afterwards:
// - every ColumnRef has level, source and column; every `*` has been replaced by its columns;
// - every Expr has `type`, and `wanted` where the construct round it needs another type;
// - every Binary has its meaning; every comparing condition its common type;
// - literals whose value decides the printed text are `fixed` (TOP counts, ORDER BY ordinals,
// everything in a query
//   with GROUP BY or aggregates, divisors, ROUND and STR digits and the like);
// - literals that are converted have been tried: one that cannot convert is refused.

#include "tsql/access.h"
#include "tsql/ast/statement.h"
#include "tsql/catalogue.h"

namespace tarlo::tsql {

struct ResultColumn {
  std::string title;  // as the statement gives it; "" for an expression without alias
  Type type;
};

struct Resolved {
  std::vector<ResultColumn>
      columns;  // of the statement of the batch that gives rows; empty when none does
  // An INSERT that gives a value to the identity column of this table; "" for none.
  std::string explicitIdentityOf;
  std::vector<Touched> touched;
};

// Throws StatementError (Name, Kind, Rule or Unsupported).
Resolved resolve(ast::Batch& batch, Catalogue& catalogue);

// Equal but for parentheses, the case of names and how columns are qualified; both sides must be
// resolved. This is how a select item is matched with a GROUP BY item.
bool sameExpression(const ast::Expr& a, const ast::Expr& b);

}  // namespace tarlo::tsql
