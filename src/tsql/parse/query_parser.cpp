// SELECT, alone or united.

#include <fmt/format.h>

#include "tsql/limits.h"
#include "tsql/parse/grammar.h"

namespace tarlo::tsql {
namespace {

ast::Expr parseTop(TokenStream& tokens) {
  const bool inParentheses = tokens.consume(Symbol::OpenParen);
  const Token& next = tokens.peek();
  if (next.kind != TokenKind::Number || next.literalClass != ast::LiteralClass::Integer) {
    tokens.expected("a number of rows");
  }
  const Token token = tokens.take();
  if (inParentheses) tokens.expect(Symbol::CloseParen, ")");
  ast::Literal count{token.literalClass, token.value(), token.ordinal, true};
  return {token.position, std::move(count), {}, {}};
}

// A title in quotes is a literal by its looks, but part of the result's form.
std::string parseTitle(TokenStream& tokens) {
  if (tokens.peek().kind == TokenKind::Text) {
    Lexer::checkName(tokens.peek());
    return tokens.takeFixed().value();
  }
  return tokens.expectName("a title");
}

bool matchTitle(TokenStream& tokens) {
  return tokens.peek().isName() || tokens.peek().kind == TokenKind::Text;
}

// `T.*`; `*` alone and `title = expr` are told apart by the caller.
bool matchTableStar(TokenStream& tokens) {
  return tokens.peek().isName() && tokens.peek(1).symbol == Symbol::Dot &&
         tokens.peek(2).symbol == Symbol::Star;
}

ast::SelectItem parseSelectItem(TokenStream& tokens) {
  ast::SelectItem item;
  item.position = tokens.position();
  if (tokens.consume(Symbol::Star)) return item;
  if (matchTableStar(tokens)) {
    item.starTable = tokens.take().value();
    tokens.take();
    tokens.take();
    return item;
  }
  if (matchTitle(tokens) && tokens.peek(1).symbol == Symbol::Equal) {
    item.alias = parseTitle(tokens);
    tokens.take();
    item.expr = parseExpression(tokens);
    return item;
  }
  item.expr = parseExpression(tokens);
  if (tokens.consume(Keyword::As) || matchTitle(tokens)) item.alias = parseTitle(tokens);
  return item;
}

void parseSelectItems(TokenStream& tokens, ast::QuerySpec& spec) {
  do {
    spec.items.push_back(parseSelectItem(tokens));
    tokens.checkListItems(spec.items.size(), "a select list");
  } while (tokens.consume(Symbol::Comma));
}

ast::QuerySpec parseQuerySpec(TokenStream& tokens) {
  ast::QuerySpec spec;
  spec.position = tokens.position();
  tokens.expect(Keyword::Select, "SELECT");
  spec.distinct = tokens.consume(Keyword::Distinct);
  if (!spec.distinct) tokens.consume(Keyword::All);
  if (tokens.consume(Keyword::Top)) spec.top = parseTop(tokens);
  parseSelectItems(tokens, spec);
  if (tokens.consume(Keyword::From)) spec.from = parseFrom(tokens);
  if (tokens.consume(Keyword::Where)) spec.where = parseCondition(tokens);
  if (tokens.consume(Keyword::Group)) {
    tokens.expect(Keyword::By, "BY");
    spec.groupBy = parseExpressions(tokens, "GROUP BY");
  }
  if (tokens.consume(Keyword::Having)) spec.having = parseCondition(tokens);
  return spec;
}

void parseOrderBy(TokenStream& tokens, ast::Query& query) {
  tokens.expect(Keyword::By, "BY");
  do {
    ast::Expr expr = parseExpression(tokens);
    const bool descending = parseDescending(tokens);
    query.orderBy.push_back({std::move(expr), descending});
    tokens.checkListItems(query.orderBy.size(), "ORDER BY");
  } while (tokens.consume(Symbol::Comma));
}

// One word of two, such as ROW and ROWS, which mean the same.
void expectEither(TokenStream& tokens, std::string_view one, std::string_view other) {
  if (!tokens.consumeWord(one) && !tokens.consumeWord(other)) tokens.expected(other);
}

// The literal stays a parameter, so that all pages of a list share one translation.
ast::Expr parseRowCount(TokenStream& tokens) {
  const Token& next = tokens.peek();
  if (next.kind != TokenKind::Number || next.literalClass != ast::LiteralClass::Integer) {
    tokens.expected("a number of rows");
  }
  const Token token = tokens.take();
  return {token.position, ast::Literal{token.literalClass, token.value(), token.ordinal}, {}, {}};
}

void parsePaging(TokenStream& tokens, ast::Query& query) {
  query.offset = parseRowCount(tokens);
  expectEither(tokens, "ROW", "ROWS");
  if (!tokens.consume(Keyword::Fetch)) return;
  expectEither(tokens, "FIRST", "NEXT");
  query.fetch = parseRowCount(tokens);
  expectEither(tokens, "ROW", "ROWS");
  if (!tokens.consumeWord("ONLY")) tokens.expected("ONLY");
}

}  // namespace

bool parseDescending(TokenStream& tokens) {
  if (tokens.consume(Keyword::Desc)) return true;
  tokens.consume(Keyword::Asc);
  return false;
}

ast::Query parseQuery(TokenStream& tokens) {
  ast::Query query;
  query.position = tokens.position();
  query.parts.push_back(parseQuerySpec(tokens));
  while (tokens.consume(Keyword::Union)) {
    query.ops.push_back(tokens.consume(Keyword::All) ? ast::SetOp::UnionAll : ast::SetOp::Union);
    if (query.parts.size() == kMaxUnionParts) {
      tokens.refuse(Refusal::Limit, tokens.position(),
                    fmt::format("more than {} SELECTs in one UNION", kMaxUnionParts));
    }
    query.parts.push_back(parseQuerySpec(tokens));
  }
  if (!tokens.consume(Keyword::Order)) return query;
  parseOrderBy(tokens, query);
  if (tokens.consumeWord("OFFSET")) parsePaging(tokens, query);
  return query;
}

}  // namespace tarlo::tsql
