#include "database/postgresql/values.h"

#include <charconv>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "database/decimal_text.h"
#include "text/date_text.h"
#include "variant/convert.h"

namespace tarlo::database {
namespace {

// Types by their numbers, which are the same on every server.
constexpr Oid kBool = 16, kInt8 = 20, kInt2 = 21, kInt4 = 23, kFloat4 = 700, kFloat8 = 701,
              kDate = 1082, kTimestamp = 1114, kTimestampZone = 1184, kNumeric = 1700;

Variant smallest(std::int64_t number) {
  if (number < std::numeric_limits<std::int32_t>::min() ||
      number > std::numeric_limits<std::int32_t>::max()) {
    return Variant(number);
  }
  return Variant(static_cast<std::int32_t>(number));
}

template <class Number>
std::optional<Number> numberOf(std::string_view text) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// A numeric may be "NaN" or "Infinity", which no decimal is.
bool isPlainNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("-0123456789.") == std::string_view::npos;
}

Variant integer(std::string_view text) {
  // Whole numbers may come with a fraction of zeros, from an expression of decimals.
  const std::size_t point = text.find('.');
  const bool isWhole = point != std::string_view::npos &&
                       text.find_first_not_of('0', point + 1) == std::string_view::npos;
  const auto number = numberOf<std::int64_t>(isWhole ? text.substr(0, point) : text);
  if (number) return smallest(*number);
  if (text == "t" || text == "f") return Variant(static_cast<std::int32_t>(text == "t"));
  const auto real = numberOf<double>(text);
  return real ? Variant(*real) : Variant(text);
}

Variant real(std::string_view text) {
  const auto number = numberOf<double>(text);
  return number ? Variant(*number) : Variant(text);
}

Variant decimal(std::string_view text, int scale) {
  if (!isPlainNumber(text)) return real(text);
  return Variant(decimalOf(text, scale));
}

Variant date(std::string_view text) {
  // A moment with a zone is written in the session's, which is this machine's.
  const std::size_t zone = text.size() > 10 ? text.find_first_of("+-", 11) : text.npos;
  const auto time = text::readWrittenDate(text.substr(0, zone));
  constexpr int kFirstYear = 100;  // of a Date
  if (!time || time->year < kFirstYear) return Variant(text);
  return Variant(variant::dateOf(*time));
}

tsql::Kind kindOf(Oid type) {
  switch (type) {
    case kBool:
    case kInt2:
    case kInt4:
    case kInt8:
      return tsql::Kind::Int;
    case kFloat4:
    case kFloat8:
      return tsql::Kind::Float;
    case kNumeric:
      return tsql::Kind::Decimal;
    case kDate:
    case kTimestamp:
    case kTimestampZone:
      return tsql::Kind::Date;
    default:
      return tsql::Kind::Text;
  }
}

}  // namespace

variant::Decimal decimalOf(std::string_view text, int scale) {
  std::string digits = roundedDigits(text, scale);
  if (digits.find('.') != std::string::npos) {
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
  }
  if (digits == "-0") digits = "0";
  return {std::move(digits)};
}

Variant readField(const PGresult* result, int row, int i, tsql::Type type) {
  if (PQgetisnull(result, row, i) != 0) return Variant(variant::Null{});
  const std::string_view text(PQgetvalue(result, row, i),
                              static_cast<std::size_t>(PQgetlength(result, row, i)));
  constexpr int kAnyScale = 1000;
  int scale = type.scale;
  if (type.kind == tsql::Kind::Null) {
    type.kind = kindOf(PQftype(result, i));
    scale = kAnyScale;
  }
  switch (type.kind) {
    case tsql::Kind::Int:
      return integer(text);
    case tsql::Kind::Float:
      return real(text);
    case tsql::Kind::Decimal:
      return decimal(text, scale);
    case tsql::Kind::Date:
      return date(text);
    default:
      return Variant(text);
  }
}

}  // namespace tarlo::database
