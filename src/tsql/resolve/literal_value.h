#pragma once
// What a text says when a number or a date is wanted of it. The resolver tries literals with these,
// and binding converts with the same ones, so that both refuse the same texts.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarlo::tsql {

// Blanks around the text are allowed in all of these; nothing means "does not convert".

// An integer of 64 bits with an optional sign; "" is 0. A point or an exponent is refused.
std::optional<std::int64_t> parseInteger(std::string_view text);

// A finite number with an optional sign, point and, where `exponent` says so (floats take one,
// decimals do not), exponent; "" is 0.
enum class Exponent { Allowed, Refused };
std::optional<double> parseNumber(std::string_view text, Exponent exponent = Exponent::Allowed);

// `YYYY-MM-DD HH:MM:SS.mmm`, the one form in which dates are kept and compared, of a date in one of
// the forms text::kStatementDates.
std::optional<std::string> parseDate(std::string_view text);

}  // namespace tarlo::tsql
