#pragma once
// The text functions of the pages' language over UTF-8. Positions and lengths count UTF-16 units,
// as the rules of the platform do: a character beyond U+FFFF counts as two. A cut inside such a
// pair drops the half character. Bytes that are not UTF-8 count as one unit each and pass through.

#include <cstddef>
#include <string_view>

namespace tarlo::variant {

std::size_t len(std::string_view text);
// 1-based; `start` below 1 or a negative length raises error 5; beyond the end gives "".
std::string_view mid(std::string_view text, std::ptrdiff_t start);
std::string_view mid(std::string_view text, std::ptrdiff_t start, std::ptrdiff_t length);
std::string_view left(std::string_view text, std::ptrdiff_t length);   // negative length: error 5
std::string_view right(std::string_view text, std::ptrdiff_t length);  // negative length: error 5
// 1-based position of the first occurrence at or behind `start`, 0 when there is none. "" is found
// at `start` when a character stands there, so never in an empty text. A start of 0 raises error 5.
std::size_t inStr(std::string_view text, std::string_view wanted, std::size_t start = 1);

}  // namespace tarlo::variant
