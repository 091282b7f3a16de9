#include "tsql/resolve/literal_value.h"

#include <fmt/format.h>

#include <charconv>
#include <chrono>
#include <cmath>

namespace tarlo::tsql {
namespace {

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

std::size_t skipDigits(std::string_view text, std::size_t from) {
  while (from < text.size() && isDigit(text[from])) ++from;
  return from;
}

// Sign, digits, point, digits, exponent; from_chars alone would also take "inf" and refuse "+5".
bool hasNumberForm(std::string_view text, Exponent exponent) {
  std::size_t at = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  const std::size_t whole = skipDigits(text, at);
  std::size_t digits = whole - at;
  at = whole;
  if (at < text.size() && text[at] == '.') {
    const std::size_t end = skipDigits(text, at + 1);
    digits += end - at - 1;
    at = end;
  }
  if (digits == 0) return false;
  if (at == text.size()) return true;
  if (exponent == Exponent::Refused || (text[at] != 'e' && text[at] != 'E')) return false;
  ++at;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  return at < text.size() && skipDigits(text, at) == text.size();
}

// Reads one date text from left to right; every step says whether the text still fits.
class DateReader {
 public:
  explicit DateReader(std::string_view text) : text_(text) {}

  std::optional<std::string> read() {
    if (text_.empty()) return canonical();
    if (hasTimeAlone() ? !readTime() : !readDay() || !readRest()) return std::nullopt;
    if (at_ != text_.size() || !inRange()) return std::nullopt;
    return canonical();
  }

 private:
  bool hasTimeAlone() const {
    const std::size_t end = skipDigits(text_, 0);
    return end < text_.size() && text_[end] == ':';
  }

  bool readDay() {
    const std::size_t digits = skipDigits(text_, 0);
    if (digits == 8) return number(4, 4, year_) && number(2, 2, month_) && number(2, 2, day_);
    if (!number(4, 4, year_) || at_ == text_.size()) return false;
    const char separator = text_[at_];
    if (separator != '-' && separator != '/' && separator != '.') return false;
    return character(separator) && number(1, 2, month_) && character(separator) &&
           number(1, 2, day_);
  }

  bool readRest() {
    if (at_ == text_.size()) return true;
    if (character('T')) return readTime();
    if (!character(' ')) return false;
    while (character(' ')) continue;
    return readTime();
  }

  bool readTime() {
    if (!number(1, 2, hour_) || !character(':') || !number(1, 2, minute_)) return false;
    if (!character(':')) return true;
    if (!number(1, 2, second_)) return false;
    if (!character('.')) return true;
    const std::size_t start = at_;
    if (!number(1, 3, millisecond_)) return false;
    for (std::size_t digits = at_ - start; digits < 3; ++digits) millisecond_ *= 10;
    return true;
  }

  bool character(char wanted) {
    if (at_ == text_.size() || text_[at_] != wanted) return false;
    ++at_;
    return true;
  }

  bool number(std::size_t fewest, std::size_t most, int& value) {
    const std::size_t count = std::min(skipDigits(text_, at_) - at_, most);
    if (count < fewest) return false;
    std::from_chars(text_.data() + at_, text_.data() + at_ + count, value);
    at_ += count;
    return true;
  }

  bool inRange() const {
    using namespace std::chrono;
    const year_month_day date{year{year_}, month{static_cast<unsigned>(month_)},
                              day{static_cast<unsigned>(day_)}};
    return year_ >= 1753 && date.ok() && hour_ < 24 && minute_ < 60 && second_ < 60;
  }

  std::string canonical() const {
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}.{:03}", year_, month_, day_, hour_,
                       minute_, second_, millisecond_);
  }

  std::string_view text_;
  std::size_t at_ = 0;
  int year_ = 1900, month_ = 1, day_ = 1;
  int hour_ = 0, minute_ = 0, second_ = 0, millisecond_ = 0;
};

}  // namespace

std::optional<std::int64_t> parseInteger(std::string_view text) {
  text = trimmed(text);
  if (text.empty()) return 0;
  const bool plus = text[0] == '+';
  if (plus) text.remove_prefix(1);
  if (plus && !text.empty() && text[0] == '-') return std::nullopt;
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<double> parseNumber(std::string_view text, Exponent exponent) {
  text = trimmed(text);
  if (text.empty()) return 0.0;
  if (!hasNumberForm(text, exponent)) return std::nullopt;
  if (text[0] == '+') text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
    return std::nullopt;
  }
  return value;
}

std::optional<std::string> parseDate(std::string_view text) {
  return DateReader(trimmed(text)).read();
}

}  // namespace tarlo::tsql
