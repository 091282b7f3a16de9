#pragma once
// What the lexer cuts a statement into.

#include <cstdint>
#include <string>
#include <string_view>

#include "tsql/ast/literal.h"
#include "tsql/lex/keyword.h"
#include "tsql/position.h"

namespace tarlo::tsql {

enum class TokenKind : std::uint8_t {
  End,
  Name,           // bare; `keyword` says whether it is reserved
  DelimitedName,  // [name] or "name"
  Variable,       // @name, @@name
  Number,
  Text,  // 'text' or N'text'
  Symbol
};

enum class Symbol : std::uint8_t {
  None,
  OpenParen,
  CloseParen,
  Comma,
  Dot,
  Semicolon,
  Plus,
  Minus,
  Star,
  Slash,
  Percent,
  Ampersand,
  Bar,
  Caret,
  Tilde,
  Equal,
  NotEqual,
  Less,
  LessOrEqual,
  Greater,
  GreaterOrEqual
};

struct Token {
  TokenKind kind = TokenKind::End;
  Symbol symbol = Symbol::None;
  Keyword keyword = Keyword::None;
  ast::LiteralClass literalClass = ast::LiteralClass::Integer;  // Number and Text
  int ordinal = -1;                                             // Number and Text
  Position position;
  std::string_view text;  // as written, delimiters included

  // A name or a text without its delimiters, doubled ones single; anything else as written.
  std::string value() const;
  bool isName() const {
    return (kind == TokenKind::Name && keyword == Keyword::None) ||
           kind == TokenKind::DelimitedName;
  }
  bool isLiteral() const { return kind == TokenKind::Number || kind == TokenKind::Text; }
};

}  // namespace tarlo::tsql
