#pragma once
// Taking the select list of a compiled statement apart with plain text operations. Not for use
// outside this folder.

#include <string>
#include <string_view>
#include <vector>

#include "variant/array.h"
#include "variant/variant.h"

namespace tarlo::metadata {

// Parts of stored definitions and of a taken apart list stand between these.
inline constexpr std::string_view kListMark = "|||";

// Error 9 when there is no such piece.
std::string_view pieceOf(const std::vector<std::string_view>& pieces, std::size_t index);

// `name` without its brackets when it starts with one. "[" alone raises error 5.
std::string_view withoutBrackets(std::string_view name);

// "table.column" as row `row` of a pair array. The first and the last character go from both when
// the table starts with a bracket. Error 9 without a column, error 5 for one that is too short.
void storePair(Array& pairs, std::ptrdiff_t row, std::string_view qualified);

// From behind "select " up to and with the first blank of the first " from "; "" without one.
std::string_view selectListOf(std::string_view statement);

// `titles` is the array of getSQLFieldNames. Results as in introspection.h.
Variant expressionsOf(std::string list, const Variant& titles);
Variant columnsOf(std::string list, const Variant& titles);
Variant firstOperandsOf(std::string_view statement);

}  // namespace tarlo::metadata
