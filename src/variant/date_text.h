#pragma once
// What conversions and comparisons need of the calendar beyond convert.h. Not for use outside this
// folder.

#include <cstdint>
#include <optional>
#include <string_view>

#include "variant/convert.h"

namespace tarlo::variant {

// The forms that toDate takes of text; nothing for any other text or a day that does not exist.
std::optional<CalendarTime> parseDateText(std::string_view text);

// Milliseconds since day 0, rounded. Unlike Date::days it grows with time before day 0 too. Error 6
// outside the years 1 to 9999.
std::int64_t linearMilliseconds(Date date);
CalendarTime calendarOfMilliseconds(std::int64_t linear);

}  // namespace tarlo::variant
