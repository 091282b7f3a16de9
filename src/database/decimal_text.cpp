#include "database/decimal_text.h"

namespace tarlo::database {
namespace {

// Adds one to the last digit, the point left out.
void countUp(std::string& digits) {
  for (std::size_t at = digits.size(); at-- > 0;) {
    if (digits[at] == '.') continue;
    if (digits[at] != '9') {
      ++digits[at];
      return;
    }
    digits[at] = '0';
  }
  digits.insert(0, "1");
}

}  // namespace

std::string roundedDigits(std::string_view text, int scale) {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  std::string digits(text);
  if (digits.starts_with('.')) digits.insert(0, "0");
  const std::size_t point = digits.find('.');
  if (point != std::string::npos) {
    const std::size_t kept = point + 1 + static_cast<std::size_t>(scale);
    const bool isUp = kept < digits.size() && digits[kept] >= '5';
    if (kept < digits.size()) digits.resize(kept);
    if (digits.ends_with('.')) digits.pop_back();
    if (isUp) countUp(digits);
  }
  if (isNegative && digits.find_first_not_of("0.") != std::string::npos) digits.insert(0, "-");
  return digits;
}

}  // namespace tarlo::database
