// Operators between operands, of expressions and of conditions.

#include <optional>

#include "tsql/parse/grammar.h"

namespace tarlo::tsql {
namespace {

constexpr std::string_view kExpressionWanted = "an expression";
constexpr std::string_view kConditionWanted = "a condition";

Operand parseUnary(TokenStream& tokens, const UnaryEntry& entry) {
  const Position start = tokens.take().position;
  const Nesting nesting(tokens);
  ast::Expr operand = parseOperand(tokens, entry.level).takeExpr(tokens);
  return {start, ast::Unary{entry.op, std::move(operand)}};
}

Operand parseNot(TokenStream& tokens) {
  const Position start = tokens.take().position;
  const Nesting nesting(tokens);
  ast::Condition operand = parseOperand(tokens, kNot, kConditionWanted).takeCondition(tokens);
  return {start, ast::Not{std::move(operand)}};
}

Operand parsePrefixed(TokenStream& tokens, Level least, std::string_view what) {
  if (const auto* entry = findEntry(kUnaryOperators, tokens.peek().symbol, &UnaryEntry::symbol)) {
    return parseUnary(tokens, *entry);
  }
  if (least <= kNot && tokens.match(Keyword::Not)) return parseNot(tokens);
  return parsePrimary(tokens, what);
}

Operand parseBinary(TokenStream& tokens, Operand left, const BinaryEntry& entry) {
  const Position start = left.start();
  ast::Expr leftExpr = left.takeExpr(tokens);
  tokens.take();
  const auto tighter = static_cast<Level>(entry.level + 1);
  ast::Expr right = parseOperand(tokens, tighter).takeExpr(tokens);
  return {start, ast::Binary{entry.op, std::move(leftExpr), std::move(right)}};
}

Operand parseLogical(TokenStream& tokens, Operand left, const LogicEntry& entry) {
  const Position start = left.start();
  ast::Condition leftCondition = left.takeCondition(tokens);
  tokens.take();
  const auto tighter = static_cast<Level>(entry.level + 1);
  ast::Condition right = parseOperand(tokens, tighter, kConditionWanted).takeCondition(tokens);
  return {start, ast::Logical{entry.op, std::move(leftCondition), std::move(right)}};
}

Operand parseComparison(TokenStream& tokens, Operand left, const ComparisonEntry& entry) {
  const Position start = left.start();
  ast::Expr leftExpr = left.takeExpr(tokens);
  tokens.take();
  ast::Expr right = parseValue(tokens);
  return {start, ast::Comparison{entry.op, std::move(leftExpr), std::move(right), {}}};
}

// `left` with the operator that follows it and that operator's right side, if one follows that
// binds tightly enough.
bool parseOperator(TokenStream& tokens, Level least, Operand& left, ChainGuard& chain) {
  const Token& next = tokens.peek();
  const Position position = next.position;
  if (const auto* binary = findEntry(kBinaryOperators, next.symbol, &BinaryEntry::symbol)) {
    if (binary->level < least) return false;
    left = parseBinary(tokens, std::move(left), *binary);
    chain.grow(position);
    return true;
  }
  if (const auto* logic = findEntry(kLogicOperators, next.keyword, &LogicEntry::keyword)) {
    if (logic->level < least) return false;
    left = parseLogical(tokens, std::move(left), *logic);
    chain.grow(position);
    return true;
  }
  // A condition has no value to compare, so a second comparison in a row is not one.
  if (least > kPredicate || left.isCondition()) return false;
  if (const auto* entry = findEntry(kComparisons, next.symbol, &ComparisonEntry::symbol)) {
    left = parseComparison(tokens, std::move(left), *entry);
    return true;
  }
  if (!matchPredicate(tokens)) return false;
  left = parsePredicate(tokens, std::move(left));
  return true;
}

}  // namespace

Operand parseOperand(TokenStream& tokens, Level least, std::string_view what) {
  ChainGuard chain(tokens);
  Operand left = parsePrefixed(tokens, least, what);
  while (parseOperator(tokens, least, left, chain)) {
  }
  return left;
}

ast::Expr parseExpression(TokenStream& tokens) {
  return parseOperand(tokens, kAny, kExpressionWanted).takeExpr(tokens);
}

ast::Condition parseCondition(TokenStream& tokens) {
  return parseOperand(tokens, kAny, kConditionWanted).takeCondition(tokens);
}

ast::Expr parseValue(TokenStream& tokens) {
  return parseOperand(tokens, kAdditive).takeExpr(tokens);
}

std::vector<ast::Expr> parseExpressions(TokenStream& tokens, std::string_view list) {
  std::vector<ast::Expr> items;
  do {
    items.push_back(parseExpression(tokens));
    tokens.checkListItems(items.size(), list);
  } while (tokens.consume(Symbol::Comma));
  return items;
}

}  // namespace tarlo::tsql
