// A type: a name and its sizes.

#include "tsql/parse/grammar.h"

namespace tarlo::tsql {

TypeText parseType(TokenStream& tokens) {
  TypeText type;
  type.name = tokens.expectName("a type");
  if (!tokens.consume(Symbol::OpenParen)) return type;
  if (tokens.consumeWord("MAX")) {
    type.sizes.push_back(-1);
  } else {
    type.sizes.push_back(tokens.expectFixedInteger("a size or MAX"));
    if (tokens.consume(Symbol::Comma)) {
      type.sizes.push_back(tokens.expectFixedInteger("a number of decimals"));
    }
  }
  tokens.expect(Symbol::CloseParen, ") behind the size");
  return type;
}

}  // namespace tarlo::tsql
