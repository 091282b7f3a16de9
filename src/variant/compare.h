#pragma once
// Comparisons of late-bound values. Text against text is ordinal (by UTF-16 unit). A number against
// text: numeric text compares by value, any other text is greater than every number. Empty is ""
// against text and 0 against numbers. A Boolean is also equal to its name as text, and a date
// compares with the text of a date by time. Null compares as unknown.

#include <compare>
#include <optional>

#include "variant/variant.h"

namespace tarlo::variant {

// Nothing when either side is Null. Error 13 for arrays and objects. Booleans are -1 and 0 against
// numbers.
std::optional<std::weak_ordering> compare(const Variant& left, const Variant& right);

// `left = right` as a condition reads it: Null on either side is not true.
bool equals(const Variant& left, const Variant& right);
// Both sides as text (Null as ""), compared ordinally: the "&"-style comparison of tokens.
bool equalsAsText(const Variant& left, const Variant& right);

}  // namespace tarlo::variant
