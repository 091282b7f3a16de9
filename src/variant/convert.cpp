#include "variant/convert.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <limits>

#include "text/fold.h"
#include "text/pieces.h"
#include "variant/number.h"
#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

constexpr int kSignificantDigits = 15;

// Fifteen significant digits laid out without an exponent.
std::string textOfDouble(double value) {
  if (!std::isfinite(value)) throw RuntimeError(ErrorNumber::Overflow);
  if (value == 0) return "0";
  const std::string scientific = fmt::format("{:.{}e}", std::abs(value), kSignificantDigits - 1);
  const std::size_t letter = scientific.find('e');
  std::string digits = scientific.substr(0, letter);
  digits.erase(1, 1);
  digits.erase(digits.find_last_not_of('0') + 1);
  const int pointAt = std::stoi(scientific.substr(letter + 1)) + 1;
  const int count = static_cast<int>(digits.size());
  std::string text = value < 0 ? "-" : "";
  if (pointAt <= 0) {
    text.append("0.").append(static_cast<std::size_t>(-pointAt), '0').append(digits);
  } else if (pointAt >= count) {
    text.append(digits).append(static_cast<std::size_t>(pointAt - count), '0');
  } else {
    text.append(digits, 0, static_cast<std::size_t>(pointAt)).append(".");
    text.append(digits, static_cast<std::size_t>(pointAt));
  }
  return text;
}

std::string textOfDate(Date date) {
  const std::int64_t linear = linearMilliseconds(date);
  std::int64_t seconds = (linear + 500) / 1000;
  if ((linear + 500) % 1000 < 0) --seconds;
  return text::dateTimeText(calendarOfMilliseconds(seconds * 1000));
}

template <class Integer>
Integer narrowed(const Variant& value) {
  const std::int64_t wide = toInt64(value);
  if (wide < std::numeric_limits<Integer>::min() || wide > std::numeric_limits<Integer>::max()) {
    throw RuntimeError(ErrorNumber::Overflow);
  }
  return static_cast<Integer>(wide);
}

}  // namespace

std::string toText(const Variant& value) {
  switch (value.state()) {
    case State::Empty:
      return {};
    case State::Null:
      throw RuntimeError(ErrorNumber::InvalidUseOfNull);
    case State::Text:
      return value.text();
    case State::Int16:
      return std::to_string(*value.getIf<std::int16_t>());
    case State::Int32:
      return std::to_string(*value.getIf<std::int32_t>());
    case State::Int64:
      return std::to_string(*value.getIf<std::int64_t>());
    case State::Double:
      return textOfDouble(*value.getIf<double>());
    case State::Decimal:
      return value.decimal().digits;
    case State::Boolean:
      return value.boolean() ? "True" : "False";
    case State::Date:
      return textOfDate(value.date());
    case State::Array:
    case State::Object:
      break;
  }
  throw RuntimeError(ErrorNumber::TypeMismatch);
}

std::string spliced(const Variant& value) {
  return value.isNull() ? std::string() : toText(value);
}

std::int16_t toInt16(const Variant& value) {
  return narrowed<std::int16_t>(value);
}

std::int32_t toInt32(const Variant& value) {
  return narrowed<std::int32_t>(value);
}

std::int64_t toInt64(const Variant& value) {
  return asInt64(numberOf(value));
}

double toDouble(const Variant& value) {
  return asDouble(numberOf(value));
}

bool toBoolean(const Variant& value) {
  if (value.isText()) {
    const std::string_view word = text::trim(value.text());
    if (text::equalsNoCase(word, "True")) return true;
    if (text::equalsNoCase(word, "False")) return false;
  }
  return toDouble(value) != 0;
}

Date toDate(const Variant& value) {
  if (value.state() == State::Date) return value.date();
  if (value.isText()) {
    if (const auto time = text::readDate(value.text(), text::kValueDates)) return dateOf(*time);
    throw RuntimeError(ErrorNumber::TypeMismatch);
  }
  const Date date{toDouble(value)};
  linearMilliseconds(date);  // raises error 6 for a day that no calendar has
  return date;
}

bool isNumeric(const Variant& value) {
  if (value.isEmpty() || value.isNumber() || value.state() == State::Boolean) return true;
  if (!value.isText()) return false;
  const std::optional<Number> number = parseNumber(value.text());
  const auto* exact = number ? std::get_if<ExactNumber>(&*number) : nullptr;
  constexpr int kLargestExponent = std::numeric_limits<double>::max_exponent10;
  if (!exact || exact->exponent <= kLargestExponent) return number.has_value();
  if (exact->exponent > kLargestExponent + 1) return false;
  const std::string leading = fmt::format("0.{}e{}", exact->digits, exact->exponent);
  double size = 0;
  return std::from_chars(leading.data(), leading.data() + leading.size(), size).ec == std::errc();
}

}  // namespace tarlo::variant
