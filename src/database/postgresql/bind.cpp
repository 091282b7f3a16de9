#include "database/postgresql/bind.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "database/decimal_text.h"
#include "text/pieces.h"
#include "tsql/error.h"
#include "tsql/resolve/literal_value.h"

namespace tarlo::database {
namespace {

using tsql::BoundValue;
using tsql::Kind;
using tsql::ast::LiteralClass;

constexpr Oid kInt8 = 20, kInt4 = 23, kText = 25, kFloat8 = 701, kTimestamp = 1114, kNumeric = 1700;

bool isWideInteger(std::int64_t value) {
  return value < std::numeric_limits<std::int32_t>::min() ||
         value > std::numeric_limits<std::int32_t>::max();
}

bool isHex(std::string_view text) {
  return text.size() > 2 && (text[1] == 'x' || text[1] == 'X');
}

class Binder {
 public:
  explicit Binder(BoundParameters& bound) : bound_(bound) {}

  void add(const tsql::ShapedLiteral& literal, const tsql::Parameter& parameter) {
    const BoundValue value = tsql::convertLiteral(literal.literalClass, literal.text, parameter);
    Kind kind = parameter.target.kind;
    if (kind == Kind::Null) kind = ownKind(literal, value);
    switch (kind) {
      case Kind::Int:
        bound_.isWide = bound_.isWide || isWideInteger(value.integer);
        return add(kInt4, fmt::format("{}", value.integer));
      case Kind::Decimal: {
        const bool isOwn = parameter.target.kind == Kind::Null;
        return add(kNumeric, digitsOf(literal, value, isOwn ? kAnyScale : parameter.target.scale));
      }
      case Kind::Float:
        return add(kFloat8, fmt::format("{}", value.real));
      case Kind::Date:
        return add(kTimestamp, value.owned);
      default:
        return add(kText, value.owned.empty() ? value.text : std::string_view(value.owned));
    }
  }

 private:
  static constexpr int kAnyScale = 1000;

  static Kind ownKind(const tsql::ShapedLiteral& literal, const BoundValue& value) {
    if (literal.literalClass == LiteralClass::Text) return Kind::Text;
    if (literal.literalClass == LiteralClass::Float) return Kind::Float;
    return value.storage == BoundValue::Storage::Integer ? Kind::Int : Kind::Decimal;
  }

  // Never through a double, except where the literal has an exponent and so is one.
  static std::string digitsOf(const tsql::ShapedLiteral& literal, const BoundValue& value,
                              int scale) {
    const std::string_view text = text::trim(literal.text);
    if (text.empty()) return "0";
    const bool hasDigits = literal.literalClass != LiteralClass::Float && !isHex(text);
    if (hasDigits) return roundedDigits(text, scale);
    return fmt::format("{:.{}f}", value.real, scale);
  }

  void add(Oid type, std::string_view text) {
    if (text.find('\0') != std::string_view::npos) {
      throw tsql::StatementError(tsql::Refusal::Kind, {},
                                 "a text holds a character of code 0, which is not stored");
    }
    bound_.types.push_back(type);
    bound_.starts.push_back(bound_.texts.size());
    bound_.texts.append(text).push_back('\0');
  }

  BoundParameters& bound_;
};

}  // namespace

std::vector<const char*> BoundParameters::values() const {
  std::vector<const char*> values;
  values.reserve(starts.size());
  for (const std::size_t start : starts) values.push_back(texts.data() + start);
  return values;
}

BoundParameters bindLiterals(const tsql::Step& step, const tsql::Shape& shape) {
  BoundParameters bound;
  Binder binder(bound);
  for (const tsql::Parameter& parameter : step.parameters) {
    binder.add(shape.literals.at(static_cast<std::size_t>(parameter.ordinal)), parameter);
  }
  if (bound.isWide) std::replace(bound.types.begin(), bound.types.end(), kInt4, kInt8);
  return bound;
}

}  // namespace tarlo::database
