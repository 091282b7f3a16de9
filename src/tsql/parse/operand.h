#pragma once
// An expression or a condition. A parenthesis may open either, so the parser reads whichever comes
// and asks for the one it needs afterwards; nothing is read twice.

#include <variant>

#include "tsql/ast/query.h"
#include "tsql/parse/token_stream.h"

namespace tarlo::tsql {

class Operand {
 public:
  Operand(Position start, ast::ExprNode node)
      : start_(start), node_(ast::Expr{start, std::move(node), {}, {}}) {}
  Operand(Position start, ast::ConditionNode node)
      : start_(start), node_(ast::Condition{start, std::move(node)}) {}

  bool isCondition() const { return std::holds_alternative<ast::Condition>(node_); }
  // Where its text begins, a parenthesis round it included.
  Position start() const { return start_; }
  void setStart(Position start) { start_ = start; }

  // What it holds; refuses when it is the other one. The text from its start to the next token is
  // what the refusal shows.
  ast::Expr takeExpr(TokenStream& tokens);
  ast::Condition takeCondition(TokenStream& tokens);

 private:
  Position start_;
  std::variant<ast::Expr, ast::Condition> node_;
};

}  // namespace tarlo::tsql
