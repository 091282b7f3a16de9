#pragma once
// Text as a terminal shows it: how many columns it takes, and what stands for characters that would
// move the cursor or hide. Chinese titles and values are twice as wide as Latin ones, so an aligned
// table cannot count bytes or characters.

#include <cstddef>
#include <string>
#include <string_view>

namespace tarlo::text {

// 0 for combining marks, 2 for East Asian wide and full-width characters, 1 otherwise.
int columnsOf(char32_t c);
// Of text without control characters, that is, of what visible() gives.
std::size_t displayWidth(std::string_view text);
// The text where it takes at most `width` columns; otherwise its beginning with "…" behind it.
std::string cutTo(std::string_view text, std::size_t width);

// The text on one line: line ends and tabs as \n, \r and \t, other control, direction and invisible
// characters as \u{hex}, bytes that are not UTF-8 as \xhex. A backslash stays as it is.
std::string visible(std::string_view text);

}  // namespace tarlo::text
