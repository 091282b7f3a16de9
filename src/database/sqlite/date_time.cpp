#include "database/sqlite/date_time.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>

#include "database/sqlite/function_call.h"
#include "text/pieces.h"

namespace tarlo::database {
namespace {

using namespace std::chrono;

std::string longForm(const text::CalendarTime& date) {
  constexpr std::string_view kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  return fmt::format("{} {:2} {:04} {:2}:{:02}{}", kMonths[date.month - 1], date.day, date.year,
                     date.hour % 12 == 0 ? 12 : date.hour % 12, date.minute,
                     date.hour < 12 ? "AM" : "PM");
}

}  // namespace

text::CalendarTime calendarOf(DateTime time) {
  return text::calendarAt(sys_days{days{time.day}} + milliseconds{time.millisecond});
}

std::int64_t dayOf(const text::CalendarTime& date) {
  const year_month month{year{date.year}, std::chrono::month{static_cast<unsigned>(date.month)}};
  const year_month_day_last last{month / std::chrono::last};
  const unsigned day = std::min(static_cast<unsigned>(date.day), static_cast<unsigned>(last.day()));
  return sys_days{month / std::chrono::day{day}}.time_since_epoch().count();
}

DateTime parseDateTime(std::string_view text) {
  const auto time = text::readDate(text, text::kStatementDates);
  if (!time) {
    throw FunctionError("conversion failed: '" + std::string(text.substr(0, 60)) +
                        "' is not a date");
  }
  const auto moment = text::momentOf(*time);
  const auto day = floor<days>(moment);
  return {day.time_since_epoch().count(), (moment - day).count()};
}

std::string canonicalText(DateTime time) {
  constexpr std::int64_t kFirst = -79'258;   // the day before 1753-01-01 is taken too
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
  const text::CalendarTime date = calendarOf(time);
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
      return fmt::format("{:02}:{:02}:{:02}", date.hour, date.minute, date.second);
    case 111:
      return yearFirst("/");
    case 112:
      return yearFirst("");
    case 20:
    case 120:
      return text::dateTimeText(date);
    case 21:
    case 121:
      return text::millisecondText(date);
    case 23:
      return text::dayText(date);
    case 126:
      return text::replace(text::millisecondText(date), " ", "T");
    default:
      return longForm(date);
  }
}

}  // namespace tarlo::database
