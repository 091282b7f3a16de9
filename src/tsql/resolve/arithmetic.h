#pragma once
// Operators: what + means between its operands, and the types of results.

#include "tsql/ast/expr.h"

namespace tarlo::tsql {

// `expr` is a Unary or Binary whose operands are resolved: sets its type, the operands' wanted
// types and the meaning. A date added to a number is turned round, so that the date is always left.
// Refuses kinds that the operator does not take, and a divisor that is the literal 0.
void resolveUnary(ast::Expr& expr);
void resolveBinary(ast::Expr& expr);

}  // namespace tarlo::tsql
