#pragma once
// Expressions and conditions.

#include "tsql/ast/query.h"
#include "tsql/parse/operand.h"
#include "tsql/parse/precedence.h"

namespace tarlo::tsql {

ast::Expr parseExpression(TokenStream& tokens);
ast::Condition parseCondition(TokenStream& tokens);
// An expression that ends before NOT, IN and the other words that continue a condition.
ast::Expr parseValue(TokenStream& tokens);

// An expression or a condition whose operators bind at least as tightly as `least`. `what` is what
// a refusal says was expected where nothing begins.
Operand parseOperand(TokenStream& tokens, Level least, std::string_view what = "an expression");

// What operators stand between: a literal, a name, a call, a CASE, something in parentheses.
Operand parsePrimary(TokenStream& tokens, std::string_view what);

// The rest of LIKE, BETWEEN, IN, IS and their negations, the next word being one of them.
bool matchPredicate(TokenStream& tokens);
Operand parsePredicate(TokenStream& tokens, Operand left);

// Expressions between commas, at least one; `list` names it in a refusal.
std::vector<ast::Expr> parseExpressions(TokenStream& tokens, std::string_view list);

}  // namespace tarlo::tsql
