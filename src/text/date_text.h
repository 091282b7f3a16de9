#pragma once
// Days and times of day as text: the forms that are read, and the one that is written.

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarlo::text {

struct CalendarTime {
  int year = 1900, month = 1, day = 1, hour = 0, minute = 0, second = 0, millisecond = 0;
};

// Whether there is such a day, of the years 1 to 9999, and such a time in it.
bool exists(const CalendarTime& time);

// Without a zone: the count is from 1970-01-01 in the calendar's own time.
using Moment = std::chrono::sys_time<std::chrono::milliseconds>;
CalendarTime calendarAt(Moment moment);
Moment momentOf(const CalendarTime& time);  // of one that exists

// What a day and time may look like. In all forms blanks stand around, the year has four digits,
// and hours:minutes[:seconds[.milliseconds]] may follow behind a blank.
struct DateForms {
  std::string_view separators;  // one of them twice in the day, or none and eight digits
  std::size_t leastDigits;      // of minutes and seconds
  bool hasTimeAlone;            // on 1900-01-01; then no text at all is the beginning of that day
  bool hasT;                    // before the time, in the place of the blank
  int firstYear;
};
// Values of pages, and what literals of statements are.
inline constexpr DateForms kValueDates{"-/", 2, false, false, 1};
inline constexpr DateForms kStatementDates{"-/.", 1, true, true, 1753};

// Nothing for a text of another form or a time that does not exist.
std::optional<CalendarTime> readDate(std::string_view text, const DateForms& forms);

// What the writers below give: every digit there, the time and its milliseconds optional.
std::optional<CalendarTime> readWrittenDate(std::string_view text);

// YYYY-MM-DD, and with HH:MM:SS or HH:MM:SS.mmm behind it.
std::string dayText(const CalendarTime& time);
std::string dateTimeText(const CalendarTime& time);
std::string millisecondText(const CalendarTime& time);

}  // namespace tarlo::text
