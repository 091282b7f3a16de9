#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>

#include "text/date_text.h"
#include "variant/convert.h"
#include "variant/number.h"
#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

using std::chrono::sys_days;

constexpr std::int64_t kMillisecondsOfDay = 86'400'000;
constexpr sys_days kDayZero =
    std::chrono::year{1899} / std::chrono::December / std::chrono::day{30};
constexpr std::int64_t kFirstDay =
    (sys_days(std::chrono::year{1} / std::chrono::January / std::chrono::day{1}) - kDayZero)
        .count();
constexpr std::int64_t kLastDay =
    (sys_days(std::chrono::year{9999} / std::chrono::December / std::chrono::day{31}) - kDayZero)
        .count();

}  // namespace

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
  return text::calendarAt(kDayZero + std::chrono::milliseconds{linear});
}

CalendarTime calendarOf(Date date) {
  return calendarOfMilliseconds(linearMilliseconds(date));
}

Date dateOf(const CalendarTime& time) {
  if (!text::exists(time)) throw RuntimeError(ErrorNumber::InvalidCall);
  const auto since = text::momentOf(time) - kDayZero;
  const auto day = std::chrono::floor<std::chrono::days>(since);
  const auto whole = static_cast<double>(day.count());
  const double timeOfDay = static_cast<double>((since - day).count()) / kMillisecondsOfDay;
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
