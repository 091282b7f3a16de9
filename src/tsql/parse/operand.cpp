#include "tsql/parse/operand.h"

#include <fmt/format.h>

namespace tarlo::tsql {

ast::Expr Operand::takeExpr(TokenStream& tokens) {
  if (!isCondition()) return std::move(std::get<ast::Expr>(node_));
  tokens.refuse(
      Refusal::Syntax, start_,
      fmt::format("expected an expression, found the condition {}", tokens.excerptFrom(start_)));
}

ast::Condition Operand::takeCondition(TokenStream& tokens) {
  if (isCondition()) return std::move(std::get<ast::Condition>(node_));
  tokens.refuse(
      Refusal::Syntax, start_,
      fmt::format("expected a condition, found the expression {}", tokens.excerptFrom(start_)));
}

}  // namespace tarlo::tsql
