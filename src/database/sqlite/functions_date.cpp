// Dates: conversion to the canonical text, parts, sums and differences.

#include <fmt/format.h>

#include <cmath>

#include "database/sqlite/date_time.h"
#include "database/sqlite/function_call.h"
#include "tsql/resolve/date_parts.h"

namespace tarlo::database {
namespace {

using tsql::DatePart;

constexpr double kMostDays = 4e6;
constexpr std::int64_t kMostCount = 400'000'000'000'000;

DatePart partOf(const FunctionCall& call) {
  const auto part = tsql::findDatePart(call.text(0));
  if (!part) throw FunctionError("unknown date part " + std::string(call.text(0)));
  return *part;
}

DateTime plusDays(DateTime time, double days) {
  if (!(std::fabs(days) < kMostDays)) throw FunctionError("the date is out of range");
  return normalised(time.day, time.millisecond + std::llround(days * kDayMilliseconds));
}

// A number counts days from 1900-01-01.
DateTime dateArgument(const FunctionCall& call, int i) {
  if (call.isText(i)) return parseDateTime(call.text(i));
  return plusDays({kDay1900, 0}, call.number(i));
}

double daysSince1900(DateTime time) {
  return static_cast<double>(time.day - kDay1900) +
         static_cast<double>(time.millisecond) / kDayMilliseconds;
}

void giveDate(FunctionCall& call, DateTime time) {
  call.give(std::string_view(canonicalText(time)));
}

void toDate(FunctionCall& call) {
  giveDate(call, dateArgument(call, 0));
}
void startOfDay(FunctionCall& call) {
  giveDate(call, {dateArgument(call, 0).day, 0});
}
void toDays(FunctionCall& call) {
  call.give(daysSince1900(dateArgument(call, 0)));
}

void datePlus(FunctionCall& call) {
  giveDate(call, plusDays(dateArgument(call, 0), call.number(1)));
}

void daysBetween(FunctionCall& call) {
  call.give(daysSince1900(dateArgument(call, 0)) - daysSince1900(dateArgument(call, 1)));
}

void format(FunctionCall& call) {
  call.give(std::string_view(formatDate(dateArgument(call, 0), static_cast<int>(call.integer(1)))));
}

// Sunday is 0.
std::int64_t weekdayOf(std::int64_t day) {
  return ((day + 4) % 7 + 7) % 7;
}

// Weeks begin on Sunday; the week of 1 January is the first.
std::int64_t weekOf(std::int64_t day, std::int64_t firstOfYear) {
  return (day - firstOfYear + weekdayOf(firstOfYear)) / 7 + 1;
}

std::int64_t partValue(DatePart part, DateTime time) {
  const text::CalendarTime date = calendarOf(time);
  const std::int64_t firstOfYear = dayOf({date.year, 1, 1});
  switch (part) {
    case DatePart::Year:
      return date.year;
    case DatePart::Quarter:
      return (date.month + 2) / 3;
    case DatePart::Month:
      return date.month;
    case DatePart::DayOfYear:
      return time.day - firstOfYear + 1;
    case DatePart::Day:
      return date.day;
    case DatePart::Week:
      return weekOf(time.day, firstOfYear);
    case DatePart::Weekday:
      return weekdayOf(time.day) + 1;
    case DatePart::Hour:
      return time.millisecond / 3'600'000;
    case DatePart::Minute:
      return time.millisecond / 60'000 % 60;
    case DatePart::Second:
      return time.millisecond / 1000 % 60;
    case DatePart::Millisecond:
      return time.millisecond % 1000;
  }
  return 0;
}

void datePart(FunctionCall& call) {
  call.give(partValue(partOf(call), dateArgument(call, 1)));
}

// Names are those of a Chinese login: months as two digits.
void dateName(FunctionCall& call) {
  constexpr std::string_view kWeekdays[] = {"星期日", "星期一", "星期二", "星期三",
                                            "星期四", "星期五", "星期六"};
  const DatePart part = partOf(call);
  const std::int64_t value = partValue(part, dateArgument(call, 1));
  if (part == DatePart::Weekday) return call.give(kWeekdays[value - 1]);
  call.give(std::string_view(part == DatePart::Month ? fmt::format("{:02}", value)
                                                     : fmt::format("{}", value)));
}

// Which step of the part the time lies in; the difference of two of them counts boundaries.
std::int64_t stepOf(DatePart part, DateTime time) {
  const text::CalendarTime date = calendarOf(time);
  const std::int64_t milliseconds = time.day * kDayMilliseconds + time.millisecond;
  const auto floorDiv = [](std::int64_t a, std::int64_t b) {
    return a / b - static_cast<std::int64_t>(a % b < 0);
  };
  switch (part) {
    case DatePart::Year:
      return date.year;
    case DatePart::Quarter:
      return date.year * 4 + (date.month - 1) / 3;
    case DatePart::Month:
      return date.year * 12 + date.month;
    case DatePart::Week:
      return floorDiv(time.day + 4, 7);
    case DatePart::Hour:
      return floorDiv(milliseconds, 3'600'000);
    case DatePart::Minute:
      return floorDiv(milliseconds, 60'000);
    case DatePart::Second:
      return floorDiv(milliseconds, 1000);
    case DatePart::Millisecond:
      return milliseconds;
    default:
      return time.day;
  }
}

void dateDiff(FunctionCall& call) {
  const DatePart part = partOf(call);
  call.give(stepOf(part, dateArgument(call, 2)) - stepOf(part, dateArgument(call, 1)));
}

// A day that the month does not have becomes its last one.
DateTime plusMonths(DateTime time, std::int64_t months) {
  const text::CalendarTime date = calendarOf(time);
  const std::int64_t month = date.year * std::int64_t{12} + date.month - 1 + months;
  if (month < 0 || month > 9999 * 12 + 11) throw FunctionError("the date is out of range");
  const auto wholeYear = static_cast<int>(month / 12);
  return {dayOf({wholeYear, static_cast<int>(month % 12) + 1, date.day}), time.millisecond};
}

std::int64_t millisecondsOf(DatePart part) {
  switch (part) {
    case DatePart::Week:
      return 7 * kDayMilliseconds;
    case DatePart::Hour:
      return 3'600'000;
    case DatePart::Minute:
      return 60'000;
    case DatePart::Second:
      return 1000;
    case DatePart::Millisecond:
      return 1;
    default:
      return kDayMilliseconds;
  }
}

// tsql_date_add(part, count, date)
void dateAdd(FunctionCall& call) {
  const DatePart part = partOf(call);
  const std::int64_t count = call.integer(1);
  const DateTime time = dateArgument(call, 2);
  const std::int64_t months = part == DatePart::Year      ? 12
                              : part == DatePart::Quarter ? 3
                              : part == DatePart::Month   ? 1
                                                          : 0;
  const std::int64_t size = months > 0 ? 1 : millisecondsOf(part);
  if (count > kMostCount / size || count < -kMostCount / size) {
    throw FunctionError("the date is out of range");
  }
  giveDate(call, months > 0 ? plusMonths(time, count * months)
                            : normalised(time.day, time.millisecond + count * size));
}

constexpr FunctionRow kDateFunctions[] = {
    {"tsql_date", 1, toDate},
    {"tsql_day_start", 1, startOfDay},
    {"tsql_date_days", 1, toDays},
    {"tsql_date_plus", 2, datePlus},
    {"tsql_days_between", 2, daysBetween},
    {"tsql_format_date", 2, format},
    {"tsql_date_part", 2, datePart},
    {"tsql_date_name", 2, dateName},
    {"tsql_date_diff", 3, dateDiff},
    {"tsql_date_add", 3, dateAdd},
};

}  // namespace

std::span<const FunctionRow> dateFunctions() {
  return kDateFunctions;
}

}  // namespace tarlo::database
