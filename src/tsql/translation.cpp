#include "tsql/translation.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>

#include "text/date_text.h"
#include "text/pieces.h"
#include "text/utf8.h"
#include "tsql/error.h"
#include "tsql/parse/parser.h"
#include "tsql/print/printer.h"
#include "tsql/resolve/literal_value.h"

namespace tarlo::tsql {
namespace {

using ast::LiteralClass;
using Storage = BoundValue::Storage;

[[noreturn]] void refuse(std::string_view text, std::string_view wanted, const Parameter& parameter,
                         Position position) {
  constexpr std::size_t kMostBytes = 60;
  std::string message =
      fmt::format("conversion failed: '{}' is not {}", text.substr(0, kMostBytes), wanted);
  if (!parameter.column.empty()) message += " (column " + parameter.column + ")";
  throw StatementError(Refusal::Kind, position, message);
}

// The number with `scale` digits, a 5 behind them rounded away from zero, on the digits as written.
double roundedNumber(std::string_view text, double value, std::uint8_t scale) {
  const auto point = text.find('.');
  const bool hasExponent = text.find_first_of("eE") != std::string_view::npos;
  if (hasExponent || point == std::string_view::npos || text.size() - point - 1 <= scale) {
    return value;
  }
  const bool up = text[point + 1 + scale] >= '5' && text[point + 1 + scale] <= '9';
  const double cut = parseNumber(text.substr(0, point + 1 + scale)).value_or(0);
  if (!up) return cut;
  std::string unit = "0." + std::string(scale > 0 ? scale - 1u : 0u, '0') + "1";
  if (scale == 0) unit = "1";
  const double sum = (value < 0 ? cut - *parseNumber(unit) : cut + *parseNumber(unit));
  return *parseNumber(fmt::format("{:.{}f}", sum, scale));
}

class Conversion {
 public:
  Conversion(LiteralClass literalClass, std::string_view text, const Parameter& parameter,
             Position position)
      : class_(literalClass), text_(text), parameter_(parameter), position_(position) {}

  BoundValue run() {
    switch (parameter_.target.kind) {
      case Kind::Int:
        return integer();
      case Kind::Decimal:
        return decimal();
      case Kind::Float:
        return real(number("a number"));
      case Kind::Date:
        return date();
      case Kind::Text:
        return text();
      default:
        return own();
    }
  }

 private:
  static BoundValue real(double value) {
    BoundValue bound;
    bound.storage = Storage::Real;
    bound.real = value;
    return bound;
  }

  static BoundValue integer(std::int64_t value) {
    BoundValue bound;
    bound.storage = Storage::Integer;
    bound.integer = value;
    return bound;
  }

  static BoundValue owned(std::string value) {
    BoundValue bound;
    bound.owned = std::move(value);
    return bound;
  }

  bool isHex() const { return text_.size() > 2 && (text_[1] == 'x' || text_[1] == 'X'); }

  double number(std::string_view wanted, Exponent exponent = Exponent::Allowed) const {
    if (class_ == LiteralClass::Integer && isHex()) return static_cast<double>(hex());
    const auto value = parseNumber(text_, exponent);
    if (!value) refuse(text_, wanted, parameter_, position_);
    return *value;
  }

  std::int64_t hex() const {
    std::uint64_t value = 0;
    std::from_chars(text_.data() + 2, text_.data() + text_.size(), value, 16);
    return static_cast<std::int64_t>(value);
  }

  BoundValue integer() const {
    if (class_ == LiteralClass::Integer && isHex()) return integer(hex());
    if (class_ == LiteralClass::Text || class_ == LiteralClass::Integer) {
      const auto value = parseInteger(text_);
      if (!value) refuse(text_, "an integer", parameter_, position_);
      return integer(*value);
    }
    // Numbers lose their fraction.
    constexpr double kLimit = 9223372036854774784.0;
    const double value = number("an integer");
    if (value < -kLimit || value > kLimit) refuse(text_, "an integer", parameter_, position_);
    return integer(static_cast<std::int64_t>(value));
  }

  BoundValue decimal() const {
    const bool isFloat = class_ == LiteralClass::Float;
    const double value = number("a decimal", isFloat ? Exponent::Allowed : Exponent::Refused);
    return real(roundedNumber(text_, value, parameter_.target.scale));
  }

  BoundValue date() const {
    if (class_ == LiteralClass::Text) {
      const auto value = parseDate(text_);
      if (!value) refuse(text_, "a date", parameter_, position_);
      return owned(*value);
    }
    return owned(dayNumber(number("a date")));
  }

  // A number counts days from 1900-01-01.
  std::string dayNumber(double value) const {
    constexpr double kMost = 2'958'463;
    constexpr double kLeast = -53'690;
    if (value < kLeast || value > kMost) refuse(text_, "a date", parameter_, position_);
    const std::chrono::milliseconds since{std::llround(value * 86'400'000.0)};
    return text::millisecondText(text::calendarAt(text::momentOf({}) + since));
  }

  // Blanks beyond the length of a column are cut; anything else there is refused.
  BoundValue text() const {
    BoundValue bound;
    bound.text = text_;
    if (class_ != LiteralClass::Text) return owned(numberText());
    const std::size_t most = parameter_.target.length;
    // No text has more units than bytes.
    if (most == 0 || text_.size() <= most || text::utf16Length(text_) <= most) return bound;
    const std::size_t kept = text::rtrim(text_).size();
    const std::size_t units = text::utf16Length(text_.substr(0, kept));
    if (units > most) {
      throw StatementError(Refusal::Kind, position_,
                           fmt::format("text of {} characters would be truncated in column {}",
                                       units, parameter_.column));
    }
    bound.text = text_.substr(0, kept + (most - units));
    return bound;
  }

  // As the number itself reads: an integer without leading zeros, a decimal with the digits of its
  // scale, a float with six digits.
  std::string numberText() const {
    if (class_ == LiteralClass::Integer && (isHex() || parseInteger(text_))) {
      return fmt::format("{}", isHex() ? hex() : *parseInteger(text_));
    }
    if (class_ == LiteralClass::Float) return fmt::format("{:g}", number("a number"));
    std::string text(text_);
    if (text.front() == '.') text.insert(0, "0");
    if (text.back() == '.') text.pop_back();
    const auto first = text.find_first_not_of('0');
    const bool keepsZero = first == std::string::npos || text[first] == '.';
    return text.substr(std::min(first, text.size() - 1) -
                       (keepsZero && first != 0 && first != std::string::npos ? 1 : 0));
  }

  BoundValue own() const {
    BoundValue bound;
    bound.text = text_;
    if (class_ == LiteralClass::Text) return bound;
    if (class_ == LiteralClass::Integer && (isHex() || parseInteger(text_))) return integer();
    return real(number("a number"));
  }

  LiteralClass class_;
  std::string_view text_;
  const Parameter& parameter_;
  Position position_;
};

// DDL is for whoever sets a database up, never for a statement that a page has put together.
void checkDdl(const ast::Batch& batch, bool allowed) {
  if (allowed) return;
  for (const ast::Statement& statement : batch.statements) {
    if (std::holds_alternative<ast::CreateTable>(statement.node) ||
        std::holds_alternative<ast::CreateIndex>(statement.node)) {
      throw StatementError(Refusal::Unsupported, statement.position, "CREATE is not allowed here");
    }
    if (std::holds_alternative<ast::AddColumn>(statement.node)) {
      throw StatementError(Refusal::Unsupported, statement.position, "ALTER is not allowed here");
    }
  }
}

// The literals that never became nodes, with their texts.
void noteUnseen(std::string_view sql, const ast::Batch& batch, Translation& translation) {
  if (batch.fixedOrdinals.empty()) return;
  Shape shape;
  if (!shapeOf(sql, shape)) return;
  for (const int ordinal : batch.fixedOrdinals) {
    const auto index = static_cast<std::size_t>(ordinal);
    if (index >= shape.literals.size()) continue;
    const auto has = [&](const Translation::Fixed& fixed) { return fixed.ordinal == ordinal; };
    if (std::none_of(translation.fixed.begin(), translation.fixed.end(), has)) {
      translation.fixed.push_back({ordinal, std::string(shape.literals[index].text)});
    }
  }
}

}  // namespace

Translation translate(std::string_view sql, Catalogue& catalogue, const TranslateOptions& options) {
  ast::Batch batch = parse(sql, options.allowDelete ? Deletes::Known : Deletes::Unknown);
  checkDdl(batch, options.allowDdl);
  Resolved resolved = resolve(batch, catalogue);
  Translation translation;
  translation.columns = std::move(resolved.columns);
  translation.explicitIdentityOf = std::move(resolved.explicitIdentityOf);
  translation.touched = std::move(resolved.touched);
  printFor(options.dialect, batch, catalogue, translation);
  noteUnseen(sql, batch, translation);
  return translation;
}

BoundValue convertLiteral(ast::LiteralClass literalClass, std::string_view text,
                          const Parameter& parameter, Position position) {
  return Conversion(literalClass, text, parameter, position).run();
}

}  // namespace tarlo::tsql
