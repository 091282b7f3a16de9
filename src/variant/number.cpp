#include "variant/number.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "text/pieces.h"
#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr std::int64_t kMaxExponent = 1'000'000;

std::size_t digitsAt(std::string_view text, std::size_t from) {
  std::size_t i = from;
  while (i < text.size() && text[i] >= '0' && text[i] <= '9') ++i;
  return i - from;
}

ExactNumber normalised(bool negative, std::string digits, std::int64_t exponent) {
  const std::size_t first = digits.find_first_not_of('0');
  if (first == std::string::npos) return {};
  digits.erase(digits.find_last_not_of('0') + 1);
  digits.erase(0, first);
  return {negative, std::move(digits), exponent - static_cast<std::int64_t>(first)};
}

// The exponent part from the letter on; nothing when it is not one. A monstrous exponent is cut
// down to one that is out of every range as well.
std::optional<std::int64_t> parseExponent(std::string_view text) {
  if (text.empty()) return 0;
  if (std::string_view("eEdD").find(text[0]) == std::string_view::npos) return std::nullopt;
  std::size_t i = 1;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  const std::size_t count = digitsAt(text, i);
  if (count == 0 || i + count != text.size()) return std::nullopt;
  std::int64_t exponent = 0;
  const auto parsed = std::from_chars(text.data() + i, text.data() + text.size(), exponent);
  if (parsed.ec != std::errc() || exponent > kMaxExponent) exponent = kMaxExponent;
  return negative ? -exponent : exponent;
}

std::optional<Number> parseExact(std::string_view text) {
  std::size_t i = 0;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  const std::size_t whole = digitsAt(text, i);
  std::string digits(text.substr(i, whole));
  i += whole;
  if (i < text.size() && text[i] == '.') {
    const std::size_t fraction = digitsAt(text, ++i);
    digits.append(text.substr(i, fraction));
    i += fraction;
  }
  if (digits.empty()) return std::nullopt;
  const std::optional<std::int64_t> exponent = parseExponent(text.substr(i));
  if (!exponent) return std::nullopt;
  return normalised(negative, std::move(digits), static_cast<std::int64_t>(whole) + *exponent);
}

std::optional<Number> parseHexadecimal(std::string_view digits) {
  std::uint32_t bits = 0;
  const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), bits, 16);
  if (digits.empty() || digits.size() > 8 || parsed.ec != std::errc() ||
      parsed.ptr != digits.data() + digits.size()) {
    return std::nullopt;
  }
  if (digits.size() <= 4) return Number(std::int64_t{static_cast<std::int16_t>(bits)});
  return Number(std::int64_t{static_cast<std::int32_t>(bits)});
}

ExactNumber exactOf(std::int64_t value) {
  const bool negative = value < 0;
  const auto size = static_cast<std::uint64_t>(value);
  std::string digits = std::to_string(negative ? 0 - size : size);
  const auto exponent = static_cast<std::int64_t>(digits.size());
  return normalised(negative, std::move(digits), exponent);
}

std::weak_ordering orderOfSizes(const ExactNumber& a, const ExactNumber& b) {
  if (a.digits.empty() || b.digits.empty()) return !a.digits.empty() <=> !b.digits.empty();
  if (a.exponent != b.exponent) return a.exponent <=> b.exponent;
  return a.digits <=> b.digits;
}

std::weak_ordering orderExact(const ExactNumber& a, const ExactNumber& b) {
  if (a.negative != b.negative) return b.negative <=> a.negative;
  return a.negative ? orderOfSizes(b, a) : orderOfSizes(a, b);
}

std::weak_ordering orderDoubles(double a, double b) {
  if (a < b) return std::weak_ordering::less;
  return a > b ? std::weak_ordering::greater : std::weak_ordering::equivalent;
}

// Infinite beyond the range of a double.
double nearestDouble(const ExactNumber& number) {
  if (number.digits.empty()) return 0;
  const std::string text = "0." + number.digits + "e" + std::to_string(number.exponent);
  double value = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
  if (parsed.ec == std::errc::result_out_of_range) value = number.exponent > 0 ? HUGE_VAL : 0;
  return number.negative ? -value : value;
}

double nearestDouble(const Number& number) {
  if (const auto* integer = std::get_if<std::int64_t>(&number)) {
    return static_cast<double>(*integer);
  }
  if (const auto* exact = std::get_if<ExactNumber>(&number)) return nearestDouble(*exact);
  return std::get<double>(number);
}

std::int64_t exactAsInt64(const ExactNumber& number) {
  if (number.digits.empty() || number.exponent < 0) return 0;
  if (number.exponent > 19) throw RuntimeError(ErrorNumber::Overflow);
  const auto wholeDigits = static_cast<std::size_t>(number.exponent);
  std::uint64_t whole = 0;
  for (std::size_t i = 0; i < wholeDigits; ++i) {
    whole = whole * 10 + (i < number.digits.size() ? number.digits[i] - '0' : 0);
  }
  if (wholeDigits < number.digits.size()) {
    const std::string_view fraction = std::string_view(number.digits).substr(wholeDigits);
    if (fraction > "5" || (fraction == "5" && whole % 2 == 1)) ++whole;
  }
  constexpr auto kMax = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (whole > kMax + (number.negative ? 1 : 0)) throw RuntimeError(ErrorNumber::Overflow);
  return static_cast<std::int64_t>(number.negative ? 0 - whole : whole);
}

std::int64_t doubleAsInt64(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= -kTwoTo63 && rounded < kTwoTo63)) throw RuntimeError(ErrorNumber::Overflow);
  return static_cast<std::int64_t>(rounded);
}

}  // namespace

std::optional<Number> parseNumber(std::string_view text) {
  text = text::trim(text);
  if (text.empty()) return std::nullopt;
  std::int64_t integer = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), integer);
  if (parsed.ec == std::errc() && parsed.ptr == text.data() + text.size()) return Number(integer);
  if (text.size() > 2 && text[0] == '&' && (text[1] == 'H' || text[1] == 'h')) {
    return parseHexadecimal(text.substr(2));
  }
  return parseExact(text);
}

Number numberOf(const Variant& value) {
  switch (value.state()) {
    case State::Empty:
      return std::int64_t{0};
    case State::Null:
      throw RuntimeError(ErrorNumber::InvalidUseOfNull);
    case State::Text:
      if (auto number = parseNumber(value.text())) return *std::move(number);
      throw RuntimeError(ErrorNumber::TypeMismatch);
    case State::Int16:
      return std::int64_t{*value.getIf<std::int16_t>()};
    case State::Int32:
      return std::int64_t{*value.getIf<std::int32_t>()};
    case State::Int64:
      return *value.getIf<std::int64_t>();
    case State::Double:
      return *value.getIf<double>();
    case State::Decimal:
      if (auto number = parseNumber(value.decimal().digits)) return *std::move(number);
      throw RuntimeError(ErrorNumber::TypeMismatch);
    case State::Boolean:
      return std::int64_t{value.boolean() ? -1 : 0};
    case State::Date:
      return value.date().days;
    case State::Array:
    case State::Object:
      break;
  }
  throw RuntimeError(ErrorNumber::TypeMismatch);
}

double asDouble(const Number& number) {
  const double value = nearestDouble(number);
  if (std::holds_alternative<ExactNumber>(number) && std::isinf(value)) {
    throw RuntimeError(ErrorNumber::Overflow);
  }
  return value;
}

std::int64_t asInt64(const Number& number) {
  if (const auto* integer = std::get_if<std::int64_t>(&number)) return *integer;
  if (const auto* exact = std::get_if<ExactNumber>(&number)) return exactAsInt64(*exact);
  return doubleAsInt64(std::get<double>(number));
}

std::weak_ordering order(const Number& a, const Number& b) {
  if (std::holds_alternative<double>(a) || std::holds_alternative<double>(b)) {
    return orderDoubles(nearestDouble(a), nearestDouble(b));
  }
  const auto* left = std::get_if<std::int64_t>(&a);
  const auto* right = std::get_if<std::int64_t>(&b);
  if (left && right) return *left <=> *right;
  return orderExact(left ? exactOf(*left) : std::get<ExactNumber>(a),
                    right ? exactOf(*right) : std::get<ExactNumber>(b));
}

}  // namespace tarlo::variant
