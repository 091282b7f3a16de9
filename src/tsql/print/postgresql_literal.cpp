// Literals as PostgreSQL reads them: texts, with every digit that was written.

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "text/pieces.h"
#include "tsql/error.h"
#include "tsql/translation.h"

namespace tarlo::tsql {
namespace {

// Adds one to the last digit; a digit is added in front where needed.
void increment(std::string& digits) {
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    if (*digit != '9') {
      ++*digit;
      return;
    }
    *digit = '0';
  }
  digits.insert(digits.begin(), '1');
}

// The number, which has no exponent, with `scale` digits behind the point at most; a 5 behind them
// is rounded away from zero.
std::string rounded(std::string_view text, std::size_t scale) {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  std::string digits(text.substr(0, point));
  const std::string_view fraction = text.substr(std::min(point + 1, text.size()));
  const std::size_t kept = std::min(scale, fraction.size());
  digits += fraction.substr(0, kept);
  if (fraction.size() > kept && fraction[kept] >= '5') increment(digits);
  // At least one digit before the point, and no zeros before that.
  if (digits.size() <= kept) digits.insert(0, kept + 1 - digits.size(), '0');
  const std::size_t zeros = digits.find_first_not_of('0');
  digits.erase(0, std::min(zeros, digits.size() - kept - 1));
  const bool isZero = zeros == std::string::npos;
  if (kept > 0) digits.insert(digits.size() - kept, ".");
  return (isNegative && !isZero ? "-" : "") + digits;
}

std::string numberText(const BoundValue& bound) {
  return bound.storage == BoundValue::Storage::Integer ? fmt::format("{}", bound.integer)
                                                       : fmt::format("{}", bound.real);
}

}  // namespace

Kind kindOf(ast::LiteralClass literalClass) {
  constexpr Kind kKinds[] = {Kind::Int, Kind::Decimal, Kind::Float, Kind::Text};
  return kKinds[static_cast<std::size_t>(literalClass)];
}

std::string literalText(ast::LiteralClass literalClass, std::string_view text,
                        const Parameter& parameter, Position position) {
  Parameter wanted = parameter;
  constexpr std::uint8_t kEveryDigit = 255;
  if (wanted.target.kind == Kind::Null) {
    wanted.target = {kindOf(literalClass), 0, kEveryDigit};
  }
  const BoundValue bound = convertLiteral(literalClass, text, wanted, position);
  if (wanted.target.kind == Kind::Text || wanted.target.kind == Kind::Date) {
    std::string result = bound.owned.empty() ? std::string(bound.text) : bound.owned;
    if (result.find('\0') == std::string::npos) return result;
    throw StatementError(Refusal::Unsupported, position, "a text with a zero byte");
  }
  if (wanted.target.kind == Kind::Int) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (bound.integer >= Limits::min() && bound.integer <= Limits::max()) return numberText(bound);
    throw StatementError(Refusal::Kind, position,
                         fmt::format("arithmetic overflow: {} is too large for an integer", text));
  }
  const std::string_view digits = text::trim(text);
  const bool isPlain = !digits.empty() && digits.find_first_of("eExX") == std::string::npos;
  if (wanted.target.kind == Kind::Decimal && isPlain) return rounded(digits, wanted.target.scale);
  return numberText(bound);
}

}  // namespace tarlo::tsql
