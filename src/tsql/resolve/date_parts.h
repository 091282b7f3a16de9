#pragma once
// The parts that DATEPART, DATENAME, DATEADD and DATEDIFF name in their first argument.

#include <optional>
#include <string_view>

#include "text/fold.h"

namespace tarlo::tsql {

enum class DatePart {
  Year,
  Quarter,
  Month,
  DayOfYear,
  Day,
  Week,
  Weekday,
  Hour,
  Minute,
  Second,
  Millisecond
};

struct DatePartName {
  std::string_view name;
  DatePart part;
};

inline constexpr DatePartName kDatePartNames[] = {
    {"year", DatePart::Year},       {"yy", DatePart::Year},
    {"yyyy", DatePart::Year},       {"quarter", DatePart::Quarter},
    {"qq", DatePart::Quarter},      {"q", DatePart::Quarter},
    {"month", DatePart::Month},     {"mm", DatePart::Month},
    {"m", DatePart::Month},         {"dayofyear", DatePart::DayOfYear},
    {"dy", DatePart::DayOfYear},    {"y", DatePart::DayOfYear},
    {"day", DatePart::Day},         {"dd", DatePart::Day},
    {"d", DatePart::Day},           {"week", DatePart::Week},
    {"wk", DatePart::Week},         {"ww", DatePart::Week},
    {"weekday", DatePart::Weekday}, {"dw", DatePart::Weekday},
    {"w", DatePart::Weekday},       {"hour", DatePart::Hour},
    {"hh", DatePart::Hour},         {"minute", DatePart::Minute},
    {"mi", DatePart::Minute},       {"n", DatePart::Minute},
    {"second", DatePart::Second},   {"ss", DatePart::Second},
    {"s", DatePart::Second},        {"millisecond", DatePart::Millisecond},
    {"ms", DatePart::Millisecond},
};

// The part of a name or abbreviation in any case, or nothing.
inline std::optional<DatePart> findDatePart(std::string_view name) {
  for (const DatePartName& entry : kDatePartNames) {
    if (text::equalsNoCase(entry.name, name)) return entry.part;
  }
  return std::nullopt;
}

}  // namespace tarlo::tsql
