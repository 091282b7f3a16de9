#pragma once
// What a text says when a number or a date is wanted of it. The resolver tries literals with these,
// and binding converts with the same ones, so that both refuse the same texts.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tsql/lex/utf8.h"

namespace tarlo::tsql {

// Blanks around the text are allowed in all of these; nothing means "does not convert".

// An integer of 64 bits with an optional sign; "" is 0. A point or an exponent is refused.
std::optional<std::int64_t> parseInteger(std::string_view text);

// A finite number with an optional sign, point and, where `exponent` says so (floats take one,
// decimals do not), exponent; "" is 0.
enum class Exponent { Allowed, Refused };
std::optional<double> parseNumber(std::string_view text, Exponent exponent = Exponent::Allowed);

// `YYYY-MM-DD HH:MM:SS.mmm`, the one form in which dates are kept and compared. Takes
// year-month-day with `-`, `/` or `.` between or eight digits, then optionally a blank or `T` and
// hours:minutes[:seconds[.mmm]]; a time alone is on 1900-01-01, "" is the start of that day.
// Years 1753 to 9999.
std::optional<std::string> parseDate(std::string_view text);

}  // namespace tarlo::tsql
