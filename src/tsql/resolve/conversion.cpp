#include "tsql/resolve/conversion.h"

#include <fmt/format.h>

#include "text/pieces.h"
#include "text/utf8.h"
#include "tsql/error.h"
#include "tsql/resolve/literal_value.h"

namespace tarlo::tsql {
namespace {

constexpr std::uint8_t kIntDigits = 10;

// A literal as a message shows it: whole characters, not more than fit a line.
std::string quoted(std::string_view text) {
  constexpr std::size_t kMostBytes = 60;
  if (text.size() <= kMostBytes) return fmt::format("'{}'", text);
  return fmt::format("'{}...'", text::wholeCharacters(text, kMostBytes));
}

bool converts(std::string_view text, Kind kind) {
  switch (kind) {
    case Kind::Int:
      return parseInteger(text).has_value();
    case Kind::Decimal:
      return parseNumber(text, Exponent::Refused).has_value();
    case Kind::Float:
      return parseNumber(text).has_value();
    case Kind::Date:
      return parseDate(text).has_value();
    default:
      return true;
  }
}

const ast::Literal* textLiteral(const ast::Expr& expr) {
  const auto* literal = std::get_if<ast::Literal>(&expr.node);
  return literal && literal->literalClass == ast::LiteralClass::Text ? literal : nullptr;
}

}  // namespace

std::string_view describe(Kind kind) {
  switch (kind) {
    case Kind::Int:
      return "an integer";
    case Kind::Decimal:
    case Kind::Float:
      return "a number";
    case Kind::Date:
      return "a date";
    case Kind::Text:
      return "text";
    default:
      return "NULL";
  }
}

Type asDecimal(Type type) {
  return type.kind == Kind::Int ? decimalType(kIntDigits, 0) : type;
}

Type commonType(Type a, Type b) {
  if (a.kind < b.kind) std::swap(a, b);
  if (a.kind == Kind::Decimal && isNumeric(b)) {
    b = asDecimal(b);
    const int scale = std::max(a.scale, b.scale);
    const int whole = std::max(a.precision - a.scale, b.precision - b.scale);
    return decimalType(static_cast<std::uint8_t>(std::min<int>(whole + scale, kMaxPrecision)),
                       static_cast<std::uint8_t>(scale));
  }
  if (a.kind == Kind::Text) return kTextType;
  return a;
}

void tryLiteral(const ast::Expr& expr, Type type) {
  const ast::Literal* literal = textLiteral(expr);
  if (!literal || converts(literal->text, type.kind)) return;
  throw StatementError(
      Refusal::Kind, expr.position,
      fmt::format("{} cannot be converted to {}", quoted(literal->text), describe(type.kind)));
}

void want(ast::Expr& expr, Type type, std::string_view column) {
  if (expr.type.kind == Kind::Date && isNumeric(type)) {
    throw StatementError(
        Refusal::Kind, expr.position,
        fmt::format("a date does not convert to {} by itself", describe(type.kind)));
  }
  tryLiteral(expr, type);
  const ast::Literal* literal = textLiteral(expr);
  // Blanks beyond a column's length are cut when they are written, so they do not count.
  if (literal && type.kind == Kind::Text && type.length > 0 && literal->text.size() > type.length &&
      text::utf16Length(text::rtrim(literal->text)) > type.length) {
    throw StatementError(Refusal::Kind, expr.position,
                         fmt::format("{} is longer than the {} characters of column {}",
                                     quoted(literal->text), type.length, column));
  }
  expr.wanted = type;
}

}  // namespace tarlo::tsql
