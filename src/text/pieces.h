#pragma once
// Text put together and taken apart. Nothing here looks at characters: pieces are bytes between
// separators, and UTF-8 stays UTF-8 since no separator is a part of a character.

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tarlo::text {

// Between the parts of stored definitions, of filters and of statistics.
inline constexpr std::string_view kPartMark = "|||";

// The pieces side by side, in one allocation.
std::string joined(std::initializer_list<std::string_view> pieces);

// Pieces between separators; an empty text gives NO piece (an array whose upper bound is -1). The
// views point into `text`.
std::vector<std::string_view> split(std::string_view text, std::string_view separator);
std::string join(const std::vector<std::string_view>& pieces, std::string_view separator);

// Every occurrence, left to right; an empty `wanted` gives the text unchanged.
std::string replace(std::string_view text, std::string_view wanted, std::string_view by);

std::string_view trim(std::string_view text);  // blanks (U+0020) only, both ends
std::string_view ltrim(std::string_view text);
std::string_view rtrim(std::string_view text);

}  // namespace tarlo::text
