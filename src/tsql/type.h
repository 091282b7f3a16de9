#pragma once
// Kinds of values and columns. Where two kinds meet, the lower one converts to the higher:
// Date > Float > Decimal > Int > Text > Null.

#include <cstdint>

namespace tarlo::tsql {

enum class Kind : std::uint8_t { Null, Text, Int, Decimal, Float, Date };

inline constexpr std::uint8_t kMaxPrecision = 38;  // digits of a decimal

struct Type {
  Kind kind = Kind::Null;
  std::uint8_t precision = 0;  // Decimal: all digits
  std::uint8_t scale = 0;      // Decimal: digits behind the point
  std::uint16_t length = 0;    // Text: most UTF-16 units, 0 = no bound
  bool operator==(const Type&) const = default;
};

inline constexpr Type kIntType{Kind::Int};
inline constexpr Type kFloatType{Kind::Float};
inline constexpr Type kTextType{Kind::Text};
inline constexpr Type kDateType{Kind::Date};
constexpr Type decimalType(std::uint8_t precision, std::uint8_t scale) {
  return {Kind::Decimal, precision, scale};
}

constexpr bool isNumeric(Kind kind) {
  return kind == Kind::Int || kind == Kind::Decimal || kind == Kind::Float;
}
constexpr bool isNumeric(Type type) {
  return isNumeric(type.kind);
}

}  // namespace tarlo::tsql
