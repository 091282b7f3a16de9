#pragma once
// Comma-separated values as RFC 4180 has them, for everything that writes some.

#include <string>
#include <string_view>
#include <vector>

namespace tarlo::text {

// In quotes, quotes inside doubled, when it holds a comma, a quote or a line end.
std::string csvQuoted(std::string_view text);
// In quotes always.
std::string csvInQuotes(std::string_view text);

// One record with its line end, of fields in the form in which they go out.
std::string csvRecord(const std::vector<std::string>& fields);

// Whether a spreadsheet might run the text as a formula: behind blanks of any kind it begins with
// an equals sign, +, - or @, full-width forms included since some programs fold them; or it begins
// with a tab or a CR, which some take off first. A number such as -5.3 is one too by its first
// character.
bool looksLikeFormula(std::string_view text);

}  // namespace tarlo::text
