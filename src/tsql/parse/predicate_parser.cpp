// LIKE, BETWEEN, IN and IS, which stand behind an expression and make a condition of it.

#include "tsql/parse/grammar.h"

namespace tarlo::tsql {
namespace {

bool isPredicateWord(Keyword keyword) {
  return keyword == Keyword::Like || keyword == Keyword::Between || keyword == Keyword::In;
}

ast::ConditionNode parseLike(TokenStream& tokens, ast::Expr left, bool negated) {
  ast::Expr pattern = parseValue(tokens);
  if (tokens.match(Keyword::Escape)) {
    tokens.refuse(Refusal::Unsupported, tokens.position(), "ESCAPE behind LIKE is not supported");
  }
  return ast::Like{std::move(left), std::move(pattern), negated};
}

ast::ConditionNode parseBetween(TokenStream& tokens, ast::Expr left, bool negated) {
  ast::Expr low = parseValue(tokens);
  tokens.expect(Keyword::And, "AND");
  ast::Expr high = parseValue(tokens);
  return ast::Between{std::move(left), std::move(low), std::move(high), negated, {}};
}

ast::ConditionNode parseIn(TokenStream& tokens, ast::Expr left, bool negated) {
  tokens.expect(Symbol::OpenParen, "( behind IN");
  const Nesting nesting(tokens);
  if (tokens.match(Keyword::Select)) {
    ast::Query query = parseQuery(tokens);
    tokens.expect(Symbol::CloseParen, ")");
    return ast::InQuery{std::move(left), std::move(query), negated, {}};
  }
  std::vector<ast::Expr> items = parseExpressions(tokens, "an IN list");
  tokens.expect(Symbol::CloseParen, ", or )");
  return ast::InList{std::move(left), std::move(items), negated, {}};
}

ast::ConditionNode parseIs(TokenStream& tokens, ast::Expr left) {
  const bool negated = tokens.consume(Keyword::Not);
  tokens.expect(Keyword::Null, negated ? "NULL" : "NULL or NOT NULL");
  return ast::IsNull{std::move(left), negated};
}

ast::ConditionNode parseNegatable(TokenStream& tokens, ast::Expr left) {
  const bool negated = tokens.consume(Keyword::Not);
  if (tokens.consume(Keyword::Like)) return parseLike(tokens, std::move(left), negated);
  if (tokens.consume(Keyword::Between)) return parseBetween(tokens, std::move(left), negated);
  tokens.expect(Keyword::In, "LIKE, BETWEEN or IN");
  return parseIn(tokens, std::move(left), negated);
}

}  // namespace

bool matchPredicate(TokenStream& tokens) {
  const Keyword next = tokens.peek().keyword;
  if (next == Keyword::Not) return isPredicateWord(tokens.peek(1).keyword);
  return next == Keyword::Is || isPredicateWord(next);
}

Operand parsePredicate(TokenStream& tokens, Operand left) {
  const Position start = left.start();
  ast::Expr operand = left.takeExpr(tokens);
  if (tokens.consume(Keyword::Is)) return {start, parseIs(tokens, std::move(operand))};
  return {start, parseNegatable(tokens, std::move(operand))};
}

}  // namespace tarlo::tsql
