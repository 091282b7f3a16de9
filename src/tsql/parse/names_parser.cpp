// Names with points in them.

#include <fmt/format.h>

#include "text/fold.h"
#include "tsql/parse/grammar.h"

namespace tarlo::tsql {
namespace {

// There is one schema; a name that stands in another is not found under its own name either.
void checkSchema(TokenStream& tokens, Position position, const std::string& schema) {
  if (text::equalsNoCase(schema, "dbo")) return;
  tokens.refuse(Refusal::Syntax, position,
                fmt::format("expected the schema dbo, found '{}'", schema));
}

}  // namespace

ast::ColumnRef parseColumnRef(TokenStream& tokens) {
  const Position start = tokens.position();
  std::string first = tokens.expectName("a column");
  if (!tokens.consume(Symbol::Dot)) return {"", std::move(first)};
  std::string second = tokens.expectName("a column behind the point");
  if (!tokens.consume(Symbol::Dot)) return {std::move(first), std::move(second)};
  checkSchema(tokens, start, first);
  return {std::move(second), tokens.expectName("a column behind the point")};
}

ast::TableName parseTableName(TokenStream& tokens) {
  const Position start = tokens.position();
  std::string first = tokens.expectName("a table");
  if (!tokens.consume(Symbol::Dot)) return {"", std::move(first), ""};
  checkSchema(tokens, start, first);
  return {std::move(first), tokens.expectName("a table behind the point"), ""};
}

std::vector<std::string> parseColumnNames(TokenStream& tokens) {
  tokens.expect(Symbol::OpenParen, "(");
  std::vector<std::string> names;
  do {
    names.push_back(tokens.expectName("a column"));
    tokens.checkListItems(names.size(), "a column list");
  } while (tokens.consume(Symbol::Comma));
  tokens.expect(Symbol::CloseParen, ", or )");
  return names;
}

}  // namespace tarlo::tsql
