// Tables and joins.

#include <optional>

#include "tsql/parse/grammar.h"

namespace tarlo::tsql {
namespace {

std::string parseTableAlias(TokenStream& tokens) {
  if (tokens.consume(Keyword::As)) return tokens.expectName("an alias");
  return tokens.peek().isName() ? tokens.take().value() : "";
}

// The hint asks to read past locks. No engine here holds readers up, so it is dropped.
void skipTableHint(TokenStream& tokens) {
  if (!tokens.consume(Keyword::With)) return;
  tokens.expect(Symbol::OpenParen, "( behind WITH");
  if (!tokens.consumeWord("NOLOCK")) tokens.expected("NOLOCK");
  tokens.expect(Symbol::CloseParen, ")");
}

ast::DerivedTable parseDerivedTable(TokenStream& tokens) {
  tokens.take();
  const Nesting nesting(tokens);
  if (!tokens.match(Keyword::Select)) tokens.expected("SELECT");
  ast::Query query = parseQuery(tokens);
  tokens.expect(Symbol::CloseParen, ")");
  tokens.consume(Keyword::As);
  return {std::move(query), tokens.expectName("an alias for the query in parentheses")};
}

ast::TableSource parseTableSource(TokenStream& tokens) {
  const Position start = tokens.position();
  if (tokens.match(Symbol::OpenParen)) return {start, parseDerivedTable(tokens)};
  if (!tokens.peek().isName()) tokens.expected("a table");
  ast::TableName table = parseTableName(tokens);
  table.alias = parseTableAlias(tokens);
  skipTableHint(tokens);
  return {start, std::move(table)};
}

std::optional<ast::JoinKind> parseJoinKind(TokenStream& tokens) {
  if (tokens.consume(Keyword::Join)) return ast::JoinKind::Inner;
  std::optional<ast::JoinKind> kind;
  if (tokens.consume(Keyword::Inner)) {
    kind = ast::JoinKind::Inner;
  } else if (tokens.consume(Keyword::Cross)) {
    kind = ast::JoinKind::Cross;
  } else {
    if (tokens.consume(Keyword::Left)) {
      kind = ast::JoinKind::Left;
    } else if (tokens.consume(Keyword::Right)) {
      kind = ast::JoinKind::Right;
    } else if (tokens.consume(Keyword::Full)) {
      kind = ast::JoinKind::Full;
    } else {
      return std::nullopt;
    }
    tokens.consume(Keyword::Outer);
  }
  tokens.expect(Keyword::Join, "JOIN");
  return kind;
}

ast::FromItem parseFromItem(TokenStream& tokens) {
  ast::FromItem item{parseTableSource(tokens), {}};
  while (const auto kind = parseJoinKind(tokens)) {
    ast::Join join{*kind, parseTableSource(tokens), {}};
    if (*kind != ast::JoinKind::Cross) {
      tokens.expect(Keyword::On, "ON");
      join.on = parseCondition(tokens);
    }
    item.joins.push_back(std::move(join));
    tokens.checkListItems(item.joins.size(), "FROM");
  }
  return item;
}

}  // namespace

std::vector<ast::FromItem> parseFrom(TokenStream& tokens) {
  std::vector<ast::FromItem> items;
  do {
    items.push_back(parseFromItem(tokens));
    tokens.checkListItems(items.size(), "FROM");
  } while (tokens.consume(Symbol::Comma));
  return items;
}

}  // namespace tarlo::tsql
