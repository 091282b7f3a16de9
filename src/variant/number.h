#pragma once
// The numeric value of a variant, exact where the variant is: what conversions and comparisons have
// in common. Not for use outside this folder.

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "variant/convert.h"
#include "variant/variant.h"

namespace tarlo::variant {

// 0.digits times ten to the exponent; no zero at either end of the digits, none at all for zero.
struct ExactNumber {
  bool negative = false;
  std::string digits;
  std::int64_t exponent = 0;
};

using Number = std::variant<std::int64_t, ExactNumber, double>;

// Blanks around, a sign, digits with an optional point, an exponent; or &H with one to eight
// hexadecimal digits, up to four of them a 16-bit value and more a 32-bit one. Nothing for any
// other text.
std::optional<Number> parseNumber(std::string_view text);

// The value of a number, Boolean, Empty, Date or numeric text. Error 94 for Null, 13 for what has
// no numeric value.
Number numberOf(const Variant& value);

double asDouble(const Number& number);                       // error 6 beyond the range of a double
std::int64_t asInt64(const Number& number);                  // half to even; error 6 out of range
std::weak_ordering order(const Number& a, const Number& b);  // exact unless one is a double

// Milliseconds since day 0, rounded. Unlike Date::days it grows with time before day 0 too. Error 6
// outside the years 1 to 9999.
std::int64_t linearMilliseconds(Date date);
CalendarTime calendarOfMilliseconds(std::int64_t linear);

}  // namespace tarlo::variant
