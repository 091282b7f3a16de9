#pragma once
// Taking the select list of a compiled statement apart with plain text operations. Not for use
// outside this folder.

#include <string>
#include <string_view>
#include <vector>

#include "variant/variant.h"

namespace tarlo::metadata {

// Parts of stored definitions and of a taken apart list stand between these.
inline constexpr std::string_view kListMark = "|||";

// Error 9 when there is no such piece.
std::string_view pieceOf(const std::vector<std::string_view>& pieces, std::size_t index);

// From behind "select " up to and with the first blank of the first " from "; "" without one.
std::string_view selectListOf(std::string_view statement);

// `titles` is the array of getSQLFieldNames. Results as in introspection.h.
Variant expressionsOf(std::string list, const Variant& titles);
Variant columnsOf(std::string list, const Variant& titles);
Variant firstOperandsOf(std::string_view statement);

}  // namespace tarlo::metadata
