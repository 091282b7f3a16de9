#include "database/postgresql/bind.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace tarlo::database {
namespace {

using tsql::BoundValue;
using tsql::Kind;

constexpr Oid kInt8 = 20, kInt4 = 23, kText = 25, kFloat8 = 701, kTimestamp = 1114, kNumeric = 1700;

bool isWideInteger(std::int64_t value) {
  return value < std::numeric_limits<std::int32_t>::min() ||
         value > std::numeric_limits<std::int32_t>::max();
}

class Binder {
 public:
  explicit Binder(BoundParameters& bound) : bound_(bound) {}

  void add(const tsql::ShapedLiteral& literal, const tsql::Parameter& parameter) {
    Kind kind = parameter.target.kind;
    if (kind == Kind::Null) kind = tsql::kindOf(literal.literalClass);
    if (kind == Kind::Int) return addInteger(literal, parameter);
    add(typeOf(kind), tsql::literalText(literal.literalClass, literal.text, parameter));
  }

 private:
  static Oid typeOf(Kind kind) {
    switch (kind) {
      case Kind::Decimal:
        return kNumeric;
      case Kind::Float:
        return kFloat8;
      case Kind::Date:
        return kTimestamp;
      default:
        return kText;
    }
  }

  // Of 64 bits where it must be; one that has still more digits is a decimal.
  void addInteger(const tsql::ShapedLiteral& literal, const tsql::Parameter& parameter) {
    const BoundValue value = tsql::convertLiteral(literal.literalClass, literal.text, parameter);
    if (value.storage != BoundValue::Storage::Integer) return add(kNumeric, literal.text);
    bound_.isWide = bound_.isWide || isWideInteger(value.integer);
    add(kInt4, fmt::format("{}", value.integer));
  }

  void add(Oid type, std::string_view text) {
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
