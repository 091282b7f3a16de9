#pragma once
// What every part of the parser reads from: tokens with a little look-ahead, the message of a
// refusal, and the bounds on how deep a tree may grow.

#include <array>
#include <string_view>
#include <vector>

#include "tsql/error.h"
#include "tsql/lex/lexer.h"

namespace tarlo::tsql {

class TokenStream {
 public:
  explicit TokenStream(std::string_view sql) : sql_(sql), lexer_(sql) {}

  static constexpr std::size_t kLookAhead = 4;  // three are used; a power of two is cheap to wrap
  // The token `ahead` places before the reader, ahead < kLookAhead.
  const Token& peek(std::size_t ahead = 0);
  Token take();
  Position position() { return peek().position; }

  // match: is it next? consume: take it if it is next. expect: take it, or refuse.
  bool match(Symbol symbol) { return peek().symbol == symbol; }
  bool match(Keyword keyword) { return peek().keyword == keyword; }
  // A word that is not reserved, in any case.
  bool matchWord(std::string_view word);
  template <class What>
  bool consume(What what) {
    if (!match(what)) return false;
    take();
    return true;
  }
  bool consumeWord(std::string_view word);
  template <class What>
  void expect(What what, std::string_view name) {
    if (!consume(what)) expected(name);
  }
  // A bare or delimited name; `what` says which in the refusal.
  std::string expectName(std::string_view what);
  // An integer that is part of the grammar, such as a size: its value is fixed in the text.
  int expectFixedInteger(std::string_view what);
  // Takes a literal that is part of the grammar.
  Token takeFixed();

  // Refuses: "expected <what>, found <the next token>".
  [[noreturn]] void expected(std::string_view what);
  [[noreturn]] void refuse(Refusal refusal, Position position, std::string_view message) const;
  // The text from there to the next token, shortened for a message.
  std::string excerptFrom(Position from);

  // One item more of a list; refuses when there are too many.
  void checkListItems(std::size_t count, std::string_view list);

  std::vector<int>& fixedOrdinals() { return fixedOrdinals_; }

 private:
  friend class Nesting;
  friend class ChainGuard;

  std::string_view sql_;
  Lexer lexer_;
  std::array<Token, kLookAhead> window_;
  std::size_t first_ = 0;
  std::size_t count_ = 0;
  std::vector<int> fixedOrdinals_;
  std::size_t nesting_ = 0;
  // The height of the highest subtree built since the innermost open guard began.
  std::size_t height_ = 0;
};

// Stands where a construct opens that its operands nest in: a parenthesis, a CASE, a sign.
class Nesting {
 public:
  explicit Nesting(TokenStream& tokens);
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;
  ~Nesting();

 private:
  TokenStream& tokens_;
  std::size_t outerHeight_;
};

// Stands round a chain of operators, which makes a tree as high as the chain is long.
class ChainGuard {
 public:
  explicit ChainGuard(TokenStream& tokens);
  ChainGuard(const ChainGuard&) = delete;
  ChainGuard& operator=(const ChainGuard&) = delete;
  ~ChainGuard();
  // One operator more, its operands built. Refuses when the chain or the tree is too long.
  void grow(Position position);

 private:
  TokenStream& tokens_;
  std::size_t outerHeight_;
  std::size_t operators_ = 0;
};

}  // namespace tarlo::tsql
