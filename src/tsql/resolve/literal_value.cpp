#include "tsql/resolve/literal_value.h"

#include <charconv>
#include <cmath>

#include "text/date_text.h"
#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::tsql {
namespace {

using text::isDigit;

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

}  // namespace

std::optional<std::int64_t> parseInteger(std::string_view text) {
  text = text::trim(text);
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
  text = text::trim(text);
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
  const auto time = text::readDate(text, text::kStatementDates);
  if (!time) return {};
  return text::millisecondText(*time);
}

}  // namespace tarlo::tsql
