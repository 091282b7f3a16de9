#pragma once
// UTF-8 of statements: checked once before anything is scanned, so that scanners may trust it.

#include <cstddef>
#include <string_view>

namespace tarlo::tsql {

// Offset of the first byte that is not UTF-8 (overlong forms, surrogates and code points above
// U+10FFFF included) or is a NUL, which no engine takes inside a statement; npos when there is
// none.
std::size_t firstInvalidByte(std::string_view text);

// Length in UTF-16 units, the measure of names and texts.
std::size_t utf16Length(std::string_view text);

// At most `characters` code points from the front.
std::string_view utf8Prefix(std::string_view text, std::size_t characters);

constexpr bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace tarlo::tsql
