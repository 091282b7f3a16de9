#pragma once
// When two texts are the same to a statement: case, the width of a character (full or half) and
// trailing blanks do not count. The order here is by code point of the folded text, fast and the
// same for ever, for what needs any order; what people see sorted has the one of text_order.h.

#include <cstddef>
#include <string>
#include <string_view>

#include "text/utf8.h"

namespace tarlo::database {

// A byte that is not UTF-8 stands for itself from here on, above the last code point, so that it
// equals nothing else.
inline constexpr char32_t kNoCharacter = 0x110000;

// The character at `at`, which moves behind it.
inline char32_t decodeCharacter(std::string_view text, std::size_t& at) {
  const text::Character character = text::characterAt(text.substr(at));
  at += character.length == 0 ? 1 : character.length;
  return character.length == 0 ? kNoCharacter + character.point : character.point;
}

char32_t foldCharacter(char32_t character);
char32_t lowerCharacter(char32_t character);
char32_t upperCharacter(char32_t character);

// Folded character by character; trailing blanks stay.
std::u32string foldText(std::string_view text);
// Negative, 0 or positive, by folded code points, trailing blanks ignored.
int compareFolded(std::string_view a, std::string_view b);

std::string encodeText(std::u32string_view characters);

}  // namespace tarlo::database
