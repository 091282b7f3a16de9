#include "text/date_text.h"

#include <fmt/compile.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::text {
namespace {

using namespace std::chrono;

year_month_day dayOf(const CalendarTime& time) {
  return {year{time.year}, month{static_cast<unsigned>(time.month)},
          day{static_cast<unsigned>(time.day)}};
}

bool isBelow(int value, int bound) {
  return value >= 0 && value < bound;
}

// Reads one text from left to right; every step says whether the text still fits.
class DateReader {
 public:
  DateReader(std::string_view text, const DateForms& forms) : rest_(text), forms_(forms) {}

  std::optional<CalendarTime> read() {
    const bool fits = forms_.hasTimeAlone && (rest_.empty() || beginsTime())
                          ? rest_.empty() || readTime()
                          : readDay() && readBehindDay();
    if (!fits || !rest_.empty() || time_.year < forms_.firstYear || !exists(time_)) return {};
    return time_;
  }

 private:
  bool beginsTime() const {
    const auto* end = std::ranges::find_if_not(rest_, isDigit);
    return end != rest_.end() && *end == ':';
  }

  bool readDay() {
    if (!number(4, 4, time_.year) || rest_.empty()) return false;
    if (isDigit(rest_[0])) return number(2, 2, time_.month) && number(2, 2, time_.day);
    const char separator = rest_[0];
    return forms_.separators.find(separator) != std::string_view::npos && character(separator) &&
           number(1, 2, time_.month) && character(separator) && number(1, 2, time_.day);
  }

  bool readBehindDay() {
    if (rest_.empty()) return true;
    if (forms_.hasT && character('T')) return readTime();
    if (!character(' ')) return false;
    rest_ = ltrim(rest_);
    return readTime();
  }

  bool readTime() {
    if (!number(1, 2, time_.hour) || !character(':')) return false;
    if (!number(forms_.leastDigits, 2, time_.minute)) return false;
    if (!character(':')) return true;
    if (!number(forms_.leastDigits, 2, time_.second)) return false;
    if (!character('.')) return true;
    const std::size_t before = rest_.size();
    if (!number(1, 3, time_.millisecond)) return false;
    for (std::size_t given = before - rest_.size(); given < 3; ++given) time_.millisecond *= 10;
    return true;
  }

  bool character(char wanted) {
    if (!rest_.starts_with(wanted)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool number(std::size_t fewest, std::size_t most, int& value) {
    std::size_t count = 0;
    int read = 0;
    while (count < most && count < rest_.size() && isDigit(rest_[count])) {
      read = read * 10 + (rest_[count++] - '0');
    }
    if (count < fewest) return false;
    value = read;
    rest_.remove_prefix(count);
    return true;
  }

  std::string_view rest_;
  const DateForms& forms_;
  CalendarTime time_;
};

}  // namespace

bool exists(const CalendarTime& time) {
  // Chrono's month and day have a byte each, so a number beyond that would come out as another.
  return time.year >= 1 && time.year <= 9999 && isBelow(time.month, 256) &&
         isBelow(time.day, 256) && dayOf(time).ok() && isBelow(time.hour, 24) &&
         isBelow(time.minute, 60) && isBelow(time.second, 60) && isBelow(time.millisecond, 1000);
}

CalendarTime calendarAt(Moment moment) {
  const auto day = floor<days>(moment);
  const year_month_day date{day};
  const auto rest = static_cast<int>((moment - day).count());
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          rest / 3'600'000,
          rest / 60'000 % 60,
          rest / 1000 % 60,
          rest % 1000};
}

Moment momentOf(const CalendarTime& time) {
  return sys_days{dayOf(time)} + hours{time.hour} + minutes{time.minute} + seconds{time.second} +
         milliseconds{time.millisecond};
}

std::optional<CalendarTime> readDate(std::string_view text, const DateForms& forms) {
  return DateReader(trim(text), forms).read();
}

std::optional<CalendarTime> readWrittenDate(std::string_view text) {
  constexpr std::string_view kForm = "0000-00-00 00:00:00.000";
  if (text.size() != 10 && text.size() != 19 && text.size() != kForm.size()) return {};
  std::array<int, 7> parts{};
  std::size_t part = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (kForm[i] != '0') {
      if (text[i] != kForm[i]) return {};
      ++part;
    } else if (!isDigit(text[i])) {
      return {};
    } else {
      parts[part] = parts[part] * 10 + (text[i] - '0');
    }
  }
  const CalendarTime time{parts[0], parts[1], parts[2], parts[3], parts[4], parts[5], parts[6]};
  if (!exists(time)) return {};
  return time;
}

std::string dayText(const CalendarTime& time) {
  return fmt::format(FMT_COMPILE("{:04}-{:02}-{:02}"), time.year, time.month, time.day);
}

std::string dateTimeText(const CalendarTime& time) {
  return fmt::format(FMT_COMPILE("{:04}-{:02}-{:02} {:02}:{:02}:{:02}"), time.year, time.month,
                     time.day, time.hour, time.minute, time.second);
}

std::string millisecondText(const CalendarTime& time) {
  std::string text = dateTimeText(time);
  fmt::format_to(std::back_inserter(text), FMT_COMPILE(".{:03}"), time.millisecond);
  return text;
}

}  // namespace tarlo::text
