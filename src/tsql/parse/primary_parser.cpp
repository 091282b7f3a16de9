// What operators stand between.

#include "tsql/parse/grammar.h"

namespace tarlo::tsql {
namespace {

Operand parseParenthesized(TokenStream& tokens, std::string_view what) {
  const Position start = tokens.take().position;
  const Nesting nesting(tokens);
  if (tokens.match(Keyword::Select)) {
    ast::Query query = parseQuery(tokens);
    tokens.expect(Symbol::CloseParen, ")");
    return {start, ast::ScalarSubquery{std::move(query)}};
  }
  Operand inner = parseOperand(tokens, kAny, what);
  tokens.expect(Symbol::CloseParen, ")");
  inner.setStart(start);
  return inner;
}

Operand parseExists(TokenStream& tokens) {
  const Position start = tokens.take().position;
  tokens.expect(Symbol::OpenParen, "( behind EXISTS");
  const Nesting nesting(tokens);
  if (!tokens.match(Keyword::Select)) tokens.expected("SELECT");
  ast::Query query = parseQuery(tokens);
  tokens.expect(Symbol::CloseParen, ")");
  return {start, ast::Exists{std::move(query)}};
}

Operand parseLiteral(TokenStream& tokens) {
  const Token token = tokens.take();
  return {token.position, ast::Literal{token.literalClass, token.value(), token.ordinal}};
}

Operand parseNameOrCall(TokenStream& tokens) {
  const Position start = tokens.position();
  if (tokens.peek().kind == TokenKind::Name && tokens.peek(1).symbol == Symbol::OpenParen) {
    return parseCall(tokens);
  }
  return {start, parseColumnRef(tokens)};
}

Operand parseReserved(TokenStream& tokens, std::string_view what) {
  const Position start = tokens.position();
  switch (tokens.peek().keyword) {
    case Keyword::Null:
      tokens.take();
      return {start, ast::NullLiteral{}};
    case Keyword::Case:
      return parseCase(tokens);
    case Keyword::Exists:
      return parseExists(tokens);
    case Keyword::CurrentTimestamp:
      tokens.take();
      return {start, ast::FunctionCall{"GETDATE", {}, false, false, {}}};
    case Keyword::Left:
    case Keyword::Right:
    case Keyword::Coalesce:
    case Keyword::Nullif:
    case Keyword::Convert:
      if (tokens.peek(1).symbol == Symbol::OpenParen) return parseCall(tokens);
      tokens.take();
      tokens.expected("( behind the name of a function");
    default:
      tokens.expected(what);
  }
}

Operand parseUncollated(TokenStream& tokens, std::string_view what) {
  const Token& next = tokens.peek();
  switch (next.kind) {
    case TokenKind::Number:
    case TokenKind::Text:
      return parseLiteral(tokens);
    case TokenKind::Variable: {
      const Token token = tokens.take();
      return {token.position, ast::Variable{token.value()}};
    }
    case TokenKind::DelimitedName:
      return parseNameOrCall(tokens);
    case TokenKind::Name:
      return next.keyword == Keyword::None ? parseNameOrCall(tokens) : parseReserved(tokens, what);
    case TokenKind::Symbol:
      if (next.symbol == Symbol::OpenParen) return parseParenthesized(tokens, what);
      break;
    case TokenKind::End:
      break;
  }
  tokens.expected(what);
}

}  // namespace

Operand parsePrimary(TokenStream& tokens, std::string_view what) {
  Operand operand = parseUncollated(tokens, what);
  // One collation serves the whole database, so a collation named by hand changes nothing.
  while (!operand.isCondition() && tokens.consume(Keyword::Collate)) {
    tokens.expectName("the name of a collation");
  }
  return operand;
}

}  // namespace tarlo::tsql
