#include "database/sqlite/rounding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tarlo::database {
namespace {

// Adds one to the last digit; a digit is added in front where needed.
void increment(std::string& digits) {
  for (std::size_t i = digits.size(); i-- > 0;) {
    if (digits[i] != '9') {
      ++digits[i];
      return;
    }
    digits[i] = '0';
  }
  digits.insert(digits.begin(), '1');
}

// Whole digits and fraction digits without the point; `point` is the count of the whole ones.
std::string digitsOf(double number, std::size_t& point) {
  std::array<char, 400> buffer;
  char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(number),
                            std::chars_format::fixed)
                  .ptr;
  std::string digits(buffer.data(), end);
  point = std::min(digits.find('.'), digits.size());
  if (point < digits.size()) digits.erase(point, 1);
  return digits;
}

}  // namespace

std::string roundedText(double number, int places, Rounding rounding) {
  std::size_t point = 0;
  std::string digits = digitsOf(number, point);
  const long kept = static_cast<long>(point) + places;
  if (kept < 0) {
    digits = "0";
    point = 1;
  } else if (static_cast<std::size_t>(kept) < digits.size()) {
    const bool up = rounding == Rounding::HalfAway && digits[static_cast<std::size_t>(kept)] >= '5';
    const std::size_t whole = point;
    digits.resize(static_cast<std::size_t>(kept));
    const std::size_t before = digits.size();
    if (up) increment(digits);
    point += digits.size() - before;
    if (digits.size() < point) digits.append(point - digits.size(), '0');
    if (digits.empty() || whole == 0) digits.insert(0, "0");
  }
  const bool isZero = digits.find_first_not_of('0') == std::string::npos;
  if (places > 0) {
    digits.resize(point + static_cast<std::size_t>(places), '0');
    digits.insert(point, ".");
  }
  return (number < 0 && !isZero ? "-" : "") + digits;
}

double rounded(double number, int places, Rounding rounding) {
  if (!std::isfinite(number)) return number;
  const std::string text = roundedText(number, std::clamp(places, -400, 400), rounding);
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

}  // namespace tarlo::database
