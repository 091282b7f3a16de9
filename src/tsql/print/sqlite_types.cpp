#include "tsql/print/sqlite_types.h"

#include <fmt/format.h>

#include <array>
#include <charconv>

#include "text/fold.h"

namespace tarlo::tsql {
namespace {

struct Sizes {
  int count = 0;
  std::array<int, 2> values{};
};

// The numbers of `NAME(a)` or `NAME(a, b)`.
Sizes sizesOf(std::string_view declared) {
  Sizes sizes;
  const auto open = declared.find('(');
  if (open == std::string_view::npos) return sizes;
  const char* at = declared.data() + open + 1;
  const char* end = declared.data() + declared.size();
  while (at < end && sizes.count < 2) {
    while (at < end && (*at == ' ' || *at == ',')) ++at;
    const auto [next, error] = std::from_chars(at, end, sizes.values[sizes.count]);
    if (error != std::errc()) break;
    ++sizes.count;
    at = next;
  }
  return sizes;
}

Type textType(const Sizes& sizes) {
  Type type = kTextType;
  if (sizes.count > 0 && sizes.values[0] > 0 && sizes.values[0] <= 0xFFFF) {
    type.length = static_cast<std::uint16_t>(sizes.values[0]);
  }
  return type;
}

Type numberType(const Sizes& sizes) {
  const int precision = sizes.values[0];
  const int scale = sizes.values[1];
  if (sizes.count == 0 || precision < 1 || precision > 38 || scale < 0 || scale > precision) {
    return kFloatType;
  }
  return decimalType(static_cast<std::uint8_t>(precision), static_cast<std::uint8_t>(scale));
}

}  // namespace

std::string declaredType(Type type) {
  switch (type.kind) {
    case Kind::Int:
      return "INTEGER";
    case Kind::Decimal:
      return fmt::format("REAL({},{})", type.precision, type.scale);
    case Kind::Float:
      return "FLOAT";
    case Kind::Date:
      return "DATETIME TEXT";
    default:
      return type.length == 0 ? "TEXT" : fmt::format("TEXT({})", type.length);
  }
}

Type typeOfDeclared(std::string_view declared) {
  const std::string upper = text::upperName(declared);
  const auto has = [&](std::string_view word) { return upper.find(word) != std::string::npos; };
  const Sizes sizes = sizesOf(upper);
  if (has("DATE") || has("TIME")) return kDateType;
  if (has("INT") || has("BIT") || has("BOOL")) return kIntType;
  if (has("CHAR") || has("CLOB") || has("TEXT")) return textType(sizes);
  if (has("MONEY") && sizes.count == 0) return decimalType(19, 4);
  if (has("DEC") || has("NUM") || has("MONEY") || has("REAL")) return numberType(sizes);
  if (has("FLOA") || has("DOUB")) return kFloatType;
  return kTextType;
}

}  // namespace tarlo::tsql
