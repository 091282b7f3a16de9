#pragma once
// Expressions and conditions, bottom up. Each sets the `type` of what it resolves; `wanted` starts
// as the same type, and the construct round it changes it.

#include "tsql/ast/expr.h"
#include "tsql/resolve/context.h"

namespace tarlo::tsql {

void resolveExpr(const Context& context, ast::Expr& expr);
void resolveCondition(const Context& context, ast::Condition& condition);

// `expr` is a FunctionCall or a Cast.
void resolveCall(const Context& context, ast::Expr& expr);
void resolveCast(const Context& context, ast::Expr& expr);

}  // namespace tarlo::tsql
