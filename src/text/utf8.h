#pragma once
// The one reading and the one writing of UTF-8, for text that may hold anything. It is strict:
// bytes out of place, over-long forms, surrogates and code points beyond U+10FFFF are no
// characters. What stands for such bytes is up to who asks.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarlo::text {

struct Character {
  char32_t point = 0;        // where none begins, the byte
  std::uint32_t length = 0;  // in bytes; 0 where none begins
};
Character characterBeyondAscii(std::string_view text);
// At the front of a text that is not empty.
inline Character characterAt(std::string_view text) {
  const auto byte = static_cast<unsigned char>(text.front());
  return byte < 0x80 ? Character{byte, 1} : characterBeyondAscii(text);
}
inline std::size_t utf8Length(std::string_view text) {
  return characterAt(text).length;
}
// Takes the character at the front; a byte that begins none is taken alone, as U+FFFD.
char32_t takeCodePoint(std::string_view& text);

// Surrogates too are written, in the three bytes that no reading takes.
void appendUtf8(std::string& text, char32_t point);

constexpr bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Offset of the first byte that is not UTF-8 or is NUL; npos when there is none.
std::size_t firstInvalidByte(std::string_view text);

// At most so many characters from the front, and at most so many bytes of whole characters.
std::string_view utf8Prefix(std::string_view text, std::size_t characters);
std::string_view wholeCharacters(std::string_view text, std::size_t bytes);

// UTF-16 units, the measure of texts, names and positions. A character beyond U+FFFF counts as two,
// a byte that begins none as one.
std::size_t utf16Length(std::string_view text);

// Where a unit count falls. On a character boundary `before` and `after` are the same byte offset;
// inside a pair they enclose the pair. `units` is the count at `after`.
struct Utf16Cut {
  std::size_t before;
  std::size_t after;
  std::size_t units;
};
// At the end of the text, where that has fewer units.
Utf16Cut utf16Cut(std::string_view text, std::size_t units);

}  // namespace tarlo::text
