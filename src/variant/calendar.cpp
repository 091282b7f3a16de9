#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <ctime>
#include <optional>

#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/date_text.h"
#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::int64_t kMillisecondsOfDay = 86'400'000;
constexpr sys_days kDayZero =
    std::chrono::year{1899} / std::chrono::December / std::chrono::day{30};
constexpr std::int64_t kFirstDay =
    (sys_days(std::chrono::year{1} / std::chrono::January / std::chrono::day{1}) - kDayZero)
        .count();
constexpr std::int64_t kLastDay =
    (sys_days(std::chrono::year{9999} / std::chrono::December / std::chrono::day{31}) - kDayZero)
        .count();

// Reads digits from the front of the text: at least one, at most `most`.
std::optional<int> takeNumber(std::string_view& text, std::size_t least, std::size_t most) {
  std::size_t count = 0;
  int number = 0;
  while (count < most && count < text.size() && text[count] >= '0' && text[count] <= '9') {
    number = number * 10 + (text[count++] - '0');
  }
  if (count < least) return std::nullopt;
  text.remove_prefix(count);
  return number;
}

bool take(std::string_view& text, char wanted) {
  if (text.empty() || text[0] != wanted) return false;
  text.remove_prefix(1);
  return true;
}

bool takeDay(std::string_view& text, CalendarTime& time) {
  const std::optional<int> year = takeNumber(text, 4, 4);
  if (!year || text.empty()) return false;
  const char separator = text[0] == '-' || text[0] == '/' ? text[0] : '\0';
  const std::size_t least = separator ? 1 : 2;
  if (separator) text.remove_prefix(1);
  const std::optional<int> month = takeNumber(text, least, 2);
  if (!month || (separator && !take(text, separator))) return false;
  const std::optional<int> day = takeNumber(text, least, 2);
  if (!day) return false;
  time.year = *year;
  time.month = *month;
  time.day = *day;
  return true;
}

bool takeTime(std::string_view& text, CalendarTime& time) {
  const std::optional<int> hour = takeNumber(text, 1, 2);
  if (!hour || !take(text, ':')) return false;
  const std::optional<int> minute = takeNumber(text, 2, 2);
  if (!minute) return false;
  time.hour = *hour;
  time.minute = *minute;
  if (!take(text, ':')) return true;
  const std::optional<int> second = takeNumber(text, 2, 2);
  if (!second) return false;
  time.second = *second;
  if (!take(text, '.')) return true;
  const std::size_t before = text.size();
  const std::optional<int> fraction = takeNumber(text, 1, 3);
  if (!fraction) return false;
  constexpr std::array kScale = {100, 10, 1};
  time.millisecond = *fraction * kScale[before - text.size() - 1];
  return true;
}

bool exists(const CalendarTime& time) {
  const year_month_day day{std::chrono::year{time.year},
                           std::chrono::month{static_cast<unsigned>(time.month)},
                           std::chrono::day{static_cast<unsigned>(time.day)}};
  return time.year >= 1 && time.year <= 9999 && time.month >= 1 && time.month <= 12 &&
         time.day >= 1 && time.day <= 31 && day.ok() && time.hour >= 0 && time.hour < 24 &&
         time.minute >= 0 && time.minute < 60 && time.second >= 0 && time.second < 60 &&
         time.millisecond >= 0 && time.millisecond < 1000;
}

}  // namespace

std::optional<CalendarTime> parseDateText(std::string_view text) {
  text = text::trim(text);
  CalendarTime time;
  if (!takeDay(text, time)) return std::nullopt;
  if (take(text, ' ')) {
    text = text::ltrim(text);
    if (!takeTime(text, time)) return std::nullopt;
  }
  if (!text.empty() || !exists(time)) return std::nullopt;
  return time;
}

std::int64_t linearMilliseconds(Date date) {
  if (!(date.days > static_cast<double>(kFirstDay - 1) &&
        date.days < static_cast<double>(kLastDay + 1))) {
    throw RuntimeError(ErrorNumber::Overflow);
  }
  const double whole = std::trunc(date.days);
  const double timeOfDay = std::abs(date.days - whole) * static_cast<double>(kMillisecondsOfDay);
  return static_cast<std::int64_t>(whole) * kMillisecondsOfDay + std::llround(timeOfDay);
}

CalendarTime calendarOfMilliseconds(std::int64_t linear) {
  std::int64_t day = linear / kMillisecondsOfDay;
  if (linear % kMillisecondsOfDay < 0) --day;
  const year_month_day date{kDayZero + days{day}};
  const auto rest = static_cast<int>(linear - day * kMillisecondsOfDay);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          rest / 3'600'000,
          rest / 60'000 % 60,
          rest / 1000 % 60,
          rest % 1000};
}

CalendarTime calendarOf(Date date) {
  return calendarOfMilliseconds(linearMilliseconds(date));
}

Date dateOf(const CalendarTime& time) {
  if (!exists(time)) throw RuntimeError(ErrorNumber::InvalidCall);
  const sys_days day = std::chrono::year{time.year} / time.month / time.day;
  const auto whole = static_cast<double>((day - kDayZero).count());
  const int milliseconds =
      ((time.hour * 60 + time.minute) * 60 + time.second) * 1000 + time.millisecond;
  const double timeOfDay = milliseconds / static_cast<double>(kMillisecondsOfDay);
  // Before day 0 the fraction counts away from zero, but still forward within its day.
  return {whole < 0 ? whole - timeOfDay : whole + timeOfDay};
}

Date now() {
  const auto since = std::chrono::system_clock::now().time_since_epoch();
  const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(since).count();
  const auto seconds = static_cast<std::time_t>(milliseconds / 1000);
  std::tm local{};
  localtime_r(&seconds, &local);
  // A leap second has no place in a date; it is shown as the second before.
  return dateOf({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                 std::min(local.tm_sec, 59), static_cast<int>(milliseconds % 1000)});
}

}  // namespace tarlo::variant
