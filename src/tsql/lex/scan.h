#pragma once
// What a literal, a name and a comment are, byte by byte. The lexer and the shape both stand on
// these functions, so that they count the same literals. All take the rest of the text; the text is
// valid UTF-8.

#include <array>
#include <cstdint>
#include <string_view>

#include "text/fold.h"
#include "tsql/ast/literal.h"

namespace tarlo::tsql::scan {

enum class CharClass : std::uint8_t {
  Other,      // stands for nothing outside of literals
  Blank,      // ASCII white space
  NameStart,  // letters, `_ @ #`, and every byte of a character beyond ASCII
  NameLead,   // like NameStart, but may begin a wide blank
  NamePart,   // `$`
  Digit,
  Quote,     // opens a literal or a delimited name
  Operator,  // punctuation
};

extern const std::array<CharClass, 256> kCharClasses;

inline CharClass classOf(char c) {
  return kCharClasses[static_cast<unsigned char>(c)];
}
using text::isDigit;

// Bytes of the no-break space or the ideographic space at the front, else 0.
inline std::size_t wideBlank(std::string_view rest) {
  if (rest.starts_with("\xC2\xA0")) return 2;
  if (rest.starts_with("\xE3\x80\x80")) return 3;
  return 0;
}

// Bytes of a bare name or of a variable; 0 when there is none.
std::size_t nameLength(std::string_view rest);

struct Number {
  std::size_t length = 0;  // 0: no number, or 0x without digits
  ast::LiteralClass literalClass = ast::LiteralClass::Integer;
  bool isHexadecimal = false;
};
// `rest` begins with a digit, or a point and a digit. The number ends at the first character that
// cannot belong to it, even a letter: `1and` is two tokens, and so is `1else`, since an exponent
// needs its digits.
Number number(std::string_view rest);
inline bool startsNumber(std::string_view rest) {
  return isDigit(rest[0]) || (rest[0] == '.' && rest.size() > 1 && isDigit(rest[1]));
}

struct Quoted {
  std::size_t length = 0;  // with both delimiters; 0: never closed
  bool hasDoubled = false;
};
// `rest` begins with a delimiter that `closing` ends; a doubled closing delimiter stands for one.
Quoted quoted(std::string_view rest, char closing);

// `rest` begins with `--` (ends before the line's end) or `/*` (nests; 0 when never closed).
std::size_t lineComment(std::string_view rest);
std::size_t blockComment(std::string_view rest);

// Appends what stands between the delimiters, doubled closing ones made single.
void appendUndoubled(std::string_view inside, char closing, std::string& out);

}  // namespace tarlo::tsql::scan
