#pragma once
// Texts as statements hold them. There are no parameters above the database layer, so every value
// that comes from outside and is no number goes through here, but where a specified statement
// splices it as it comes.

#include <string>
#include <string_view>

namespace tarlo::text {

// Every apostrophe twice, for the inside of a literal; nothing else means anything there.
std::string doubledQuotes(std::string_view text);

// The whole literal: N'...'.
std::string sqlText(std::string_view text);

}  // namespace tarlo::text
