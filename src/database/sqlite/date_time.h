#pragma once
// A point in time as days and milliseconds, and its canonical text `YYYY-MM-DD HH:MM:SS.mmm`.

#include <cstdint>
#include <string>
#include <string_view>

#include "text/date_text.h"

namespace tarlo::database {

struct DateTime {
  std::int64_t day = 0;          // since 1970-01-01
  std::int64_t millisecond = 0;  // of the day
};
inline constexpr std::int64_t kDayMilliseconds = 86'400'000;
inline constexpr std::int64_t kDay1900 = -25'567;

text::CalendarTime calendarOf(DateTime time);
// Of the year, month and day; one beyond the end of its month is the month's last one.
std::int64_t dayOf(const text::CalendarTime& date);

// FunctionError for a text that is no date.
DateTime parseDateTime(std::string_view text);
// FunctionError outside of the years 1753 to 9999.
std::string canonicalText(DateTime time);
// With milliseconds carried into days, whatever their sign and size.
DateTime normalised(std::int64_t day, std::int64_t milliseconds);
// CONVERT's style; it has been checked before.
std::string formatDate(DateTime time, int style);

}  // namespace tarlo::database
