// Function calls, those with a syntax of their own included, and CASE.

#include <algorithm>
#include <array>

#include "text/fold.h"
#include "tsql/parse/grammar.h"

namespace tarlo::tsql {
namespace {

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

ast::ExprNode parseCast(TokenStream& tokens) {
  ast::Expr operand = parseExpression(tokens);
  tokens.expect(Keyword::As, "AS and a type");
  TypeText type = parseType(tokens);
  return ast::Cast{std::move(operand), std::move(type.name), std::move(type.sizes)};
}

ast::ExprNode parseConvert(TokenStream& tokens) {
  TypeText type = parseType(tokens);
  tokens.expect(Symbol::Comma, ", behind the type");
  ast::Expr operand = parseExpression(tokens);
  const int style = tokens.consume(Symbol::Comma) ? tokens.expectFixedInteger("a style") : -1;
  return ast::Cast{std::move(operand), std::move(type.name), std::move(type.sizes), true, style};
}

ast::ExprNode parseIif(TokenStream& tokens) {
  ast::Condition when = parseCondition(tokens);
  tokens.expect(Symbol::Comma, ",");
  ast::Expr then = parseExpression(tokens);
  tokens.expect(Symbol::Comma, ",");
  ast::SearchedCase result;
  result.branches.push_back({std::move(when), std::move(then)});
  result.otherwise = parseExpression(tokens);
  return result;
}

void parseArguments(TokenStream& tokens, ast::FunctionCall& call) {
  if (tokens.match(Symbol::CloseParen)) return;
  call.arguments = parseExpressions(tokens, "an argument list");
}

ast::ExprNode parseDateCall(TokenStream& tokens, ast::FunctionCall call) {
  const Token& part = tokens.peek();
  if (part.kind != TokenKind::Name || part.keyword != Keyword::None) {
    tokens.expected("a part of a date such as day");
  }
  call.part = tokens.take().value();
  tokens.expect(Symbol::Comma, ", behind the part of the date");
  call.arguments = parseExpressions(tokens, "an argument list");
  return call;
}

ast::ExprNode parseAggregate(TokenStream& tokens, ast::FunctionCall call) {
  if (call.name == "COUNT" && tokens.consume(Symbol::Star)) {
    call.star = true;
    return call;
  }
  call.distinct = tokens.consume(Keyword::Distinct);
  if (!call.distinct) tokens.consume(Keyword::All);
  call.arguments.push_back(parseExpression(tokens));
  return call;
}

ast::ExprNode parseCallInside(TokenStream& tokens, std::string name) {
  if (name == "CAST") return parseCast(tokens);
  if (name == "CONVERT") return parseConvert(tokens);
  if (name == "IIF") return parseIif(tokens);
  ast::FunctionCall call{std::move(name), {}, false, false, {}};
  if (isOneOf(call.name, {"DATEPART", "DATENAME", "DATEADD", "DATEDIFF"})) {
    return parseDateCall(tokens, std::move(call));
  }
  if (isOneOf(call.name, {"COUNT", "SUM", "AVG", "MIN", "MAX"})) {
    return parseAggregate(tokens, std::move(call));
  }
  parseArguments(tokens, call);
  return call;
}

ast::ExprNode parseSimpleCase(TokenStream& tokens) {
  ast::SimpleCase result{parseExpression(tokens), {}, {}};
  while (tokens.consume(Keyword::When)) {
    ast::Expr when = parseExpression(tokens);
    tokens.expect(Keyword::Then, "THEN");
    result.branches.push_back({std::move(when), parseExpression(tokens)});
    tokens.checkListItems(result.branches.size(), "a CASE");
  }
  if (result.branches.empty()) tokens.expected("WHEN");
  if (tokens.consume(Keyword::Else)) result.otherwise = parseExpression(tokens);
  return result;
}

ast::ExprNode parseSearchedCase(TokenStream& tokens) {
  ast::SearchedCase result;
  while (tokens.consume(Keyword::When)) {
    ast::Condition when = parseCondition(tokens);
    tokens.expect(Keyword::Then, "THEN");
    result.branches.push_back({std::move(when), parseExpression(tokens)});
    tokens.checkListItems(result.branches.size(), "a CASE");
  }
  if (tokens.consume(Keyword::Else)) result.otherwise = parseExpression(tokens);
  return result;
}

}  // namespace

Operand parseCall(TokenStream& tokens) {
  const Token name = tokens.take();
  tokens.take();
  const Nesting nesting(tokens);
  ast::ExprNode node = parseCallInside(tokens, text::upperName(name.text));
  tokens.expect(Symbol::CloseParen, ")");
  return {name.position, std::move(node)};
}

Operand parseCase(TokenStream& tokens) {
  const Position start = tokens.take().position;
  const Nesting nesting(tokens);
  ast::ExprNode node =
      tokens.match(Keyword::When) ? parseSearchedCase(tokens) : parseSimpleCase(tokens);
  tokens.expect(Keyword::End, "WHEN, ELSE or END");
  return {start, std::move(node)};
}

}  // namespace tarlo::tsql
