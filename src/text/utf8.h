#pragma once
// UTF-8 of text that may hold anything: one strict reading for everybody who looks at characters.

#include <cstddef>
#include <string>
#include <string_view>

namespace tarlo::text {

// Bytes of the character at the front of a text that is not empty; 0 when none begins there: bytes
// out of place, over-long forms, surrogates, code points beyond U+10FFFF.
std::size_t utf8Length(std::string_view text);

// Takes the character at the front; a byte that begins none is taken alone, as U+FFFD.
char32_t takeCodePoint(std::string_view& text);

void appendUtf8(std::string& text, char32_t point);

}  // namespace tarlo::text
