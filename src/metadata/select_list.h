#pragma once
// Taking the select list of a compiled statement apart with plain text operations. Not for use
// outside this folder.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "metadata/stored_schemes.h"
#include "variant/array.h"

namespace tarlo::metadata {

using Pieces = std::vector<std::string_view>;

// Error 9 when there is no such piece.
std::string_view pieceOf(const Pieces& pieces, std::size_t index);

// `name` without its brackets when it starts with one. "[" alone raises error 5.
std::string_view withoutBrackets(std::string_view name);

// The names of "table.column". The first and the last character go from both when the table starts
// with a bracket. Error 9 without a column, error 5 for one that is too short.
QualifiedName qualifiedName(std::string_view text);

// From behind "select " up to and with the first blank of the first " from "; "" without one.
std::string_view selectListOf(std::string_view statement);

// Results as in stored_schemes.h.
std::vector<std::string> expressionsOf(std::string list, std::span<const std::string> titles);
std::vector<QualifiedName> columnsOf(std::string list, std::span<const std::string> titles);
// The first operand of every item of a select list without blanks. Error 9 for one without a dot.
std::vector<QualifiedName> firstOperandsOf(std::string_view statement);

// As operations give pairs: bounds 2 and m, item i, from 0, is (1, i+1) and (2, i+1), and index 0
// of either dimension stays Empty.
Variant pairArray(const std::vector<QualifiedName>& names);

}  // namespace tarlo::metadata
