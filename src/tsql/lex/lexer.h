#pragma once
// Text to tokens, one at a time. Blanks and comments are skipped; literals are numbered in the
// order of the text.

#include <string_view>

#include "tsql/lex/token.h"

namespace tarlo::tsql {

class Lexer {
 public:
  // Keeps a view of the text. Throws StatementError when it is too long or no valid UTF-8.
  explicit Lexer(std::string_view sql);

  // The next token; End again and again at the end. Throws StatementError for what is no token: an
  // open quote, [] without a name, a name that is too long, a character that means nothing.
  Token next();

  // Refuses a token whose value cannot be a name: empty, too long, with a control character.
  static void checkName(const Token& token);

 private:
  std::string_view rest() const { return sql_.substr(at_); }
  void skipBlanksAndComments();
  void skipBlockComment();
  // Where `offset` stands; offsets must not go down from call to call.
  Position positionAt(std::size_t offset);
  Token take(Token token, std::size_t length);

  Token takeName();
  Token takeDelimitedName();
  Token takeText(std::size_t prefix);
  Token takeNumber();
  Token takeSymbol();

  std::string_view sql_;
  std::size_t at_ = 0;
  Position position_;
  int nextOrdinal_ = 0;
};

}  // namespace tarlo::tsql
