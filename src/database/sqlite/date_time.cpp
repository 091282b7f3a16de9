#include "database/sqlite/date_time.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <chrono>

#include "database/sqlite/function_call.h"
#include "tsql/resolve/literal_value.h"

namespace tarlo::database {
namespace {

using namespace std::chrono;

int part(std::string_view text, std::size_t from, std::size_t count) {
  int value = 0;
  std::from_chars(text.data() + from, text.data() + from + count, value);
  return value;
}

std::string longForm(const CalendarDay& date, int hour, int minute) {
  constexpr std::string_view kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  return fmt::format("{} {:2} {:04} {:2}:{:02}{}", kMonths[date.month - 1], date.day, date.year,
                     hour % 12 == 0 ? 12 : hour % 12, minute, hour < 12 ? "AM" : "PM");
}

}  // namespace

CalendarDay calendarDay(std::int64_t day) {
  const year_month_day date{sys_days{days{day}}};
  return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day()))};
}

std::int64_t dayOf(CalendarDay date) {
  const year_month month{year{date.year}, std::chrono::month{static_cast<unsigned>(date.month)}};
  const year_month_day_last last{month / std::chrono::last};
  const unsigned day = std::min(static_cast<unsigned>(date.day), static_cast<unsigned>(last.day()));
  return sys_days{month / std::chrono::day{day}}.time_since_epoch().count();
}

DateTime parseDateTime(std::string_view text) {
  const auto canonical = tsql::parseDate(text);
  if (!canonical) {
    throw FunctionError("conversion failed: '" + std::string(text.substr(0, 60)) +
                        "' is not a date");
  }
  const std::string_view form = *canonical;
  const std::int64_t seconds =
      (part(form, 11, 2) * 60 + part(form, 14, 2)) * 60 + part(form, 17, 2);
  return {dayOf({part(form, 0, 4), part(form, 5, 2), part(form, 8, 2)}),
          seconds * 1000 + part(form, 20, 3)};
}

std::string canonicalText(DateTime time) {
  constexpr std::int64_t kFirst = -79'258;   // 1753-01-01
  constexpr std::int64_t kLast = 2'932'896;  // 9999-12-31
  if (time.day < kFirst || time.day > kLast) {
    throw FunctionError("the date is outside of the years 1753 to 9999");
  }
  return formatDate(time, 121);
}

DateTime normalised(std::int64_t day, std::int64_t milliseconds) {
  std::int64_t carried = milliseconds / kDayMilliseconds;
  std::int64_t rest = milliseconds % kDayMilliseconds;
  if (rest < 0) {
    rest += kDayMilliseconds;
    --carried;
  }
  return {day + carried, rest};
}

std::string formatDate(DateTime time, int style) {
  const CalendarDay date = calendarDay(time.day);
  const int ms = static_cast<int>(time.millisecond);
  const int hour = ms / 3'600'000;
  const int minute = ms / 60'000 % 60;
  const std::string clock = fmt::format("{:02}:{:02}:{:02}", hour, minute, ms / 1000 % 60);
  const std::string isoDay = fmt::format("{:04}-{:02}-{:02}", date.year, date.month, date.day);
  const auto dayFirst = [&](char c) {
    return fmt::format("{:02}{}{:02}{}{:04}", date.day, c, date.month, c, date.year);
  };
  const auto yearFirst = [&](std::string_view c) {
    return fmt::format("{:04}{}{:02}{}{:02}", date.year, c, date.month, c, date.day);
  };
  switch (style) {
    case 101:
      return fmt::format("{:02}/{:02}/{:04}", date.month, date.day, date.year);
    case 102:
      return yearFirst(".");
    case 103:
      return dayFirst('/');
    case 104:
      return dayFirst('.');
    case 105:
      return dayFirst('-');
    case 108:
      return clock;
    case 111:
      return yearFirst("/");
    case 112:
      return yearFirst("");
    case 20:
    case 120:
      return isoDay + " " + clock;
    case 21:
    case 121:
      return fmt::format("{} {}.{:03}", isoDay, clock, ms % 1000);
    case 23:
      return isoDay;
    case 126:
      return fmt::format("{}T{}.{:03}", isoDay, clock, ms % 1000);
    default:
      return longForm(date, hour, minute);
  }
}

}  // namespace tarlo::database
