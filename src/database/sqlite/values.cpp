#include "database/sqlite/values.h"

#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "database/sqlite/rounding.h"
#include "text/date_text.h"
#include "variant/convert.h"

namespace tarlo::database {
namespace {

std::string_view textOf(sqlite3_stmt* statement, int i) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
  if (!text) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement, i))};
}

Variant integer(std::int64_t number) {
  if (number < std::numeric_limits<std::int32_t>::min() ||
      number > std::numeric_limits<std::int32_t>::max()) {
    return Variant(number);
  }
  return Variant(static_cast<std::int32_t>(number));
}

Variant asStored(sqlite3_stmt* statement, int i, int storage) {
  switch (storage) {
    case SQLITE_INTEGER:
      return integer(sqlite3_column_int64(statement, i));
    case SQLITE_FLOAT:
      return Variant(sqlite3_column_double(statement, i));
    default:
      return Variant(textOf(statement, i));
  }
}

Variant date(sqlite3_stmt* statement, int i) {
  const std::string_view text = textOf(statement, i);
  const auto time = text::readWrittenDate(text);
  constexpr int kFirstYear = 100;  // of a Date
  if (!time || time->year < kFirstYear) return Variant(text);
  return Variant(variant::dateOf(*time));
}

Variant wholeNumber(sqlite3_stmt* statement, int i) {
  const double number = sqlite3_column_double(statement, i);
  constexpr double kLimit = 9223372036854775807.0;
  if (number != std::trunc(number) || std::fabs(number) >= kLimit) return Variant(number);
  return integer(static_cast<std::int64_t>(number));
}

}  // namespace

variant::Decimal roundedDecimal(double number, int scale) {
  std::string digits = roundedText(number, scale);
  if (digits.find('.') != std::string::npos) {
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
  }
  return {std::move(digits)};
}

Variant readColumn(sqlite3_stmt* statement, int i, tsql::Type type) {
  const int storage = sqlite3_column_type(statement, i);
  if (storage == SQLITE_NULL) return Variant(variant::Null{});
  const bool number = storage == SQLITE_INTEGER || storage == SQLITE_FLOAT;
  switch (type.kind) {
    case tsql::Kind::Text:
      return Variant(textOf(statement, i));
    case tsql::Kind::Int:
      if (storage == SQLITE_FLOAT) return wholeNumber(statement, i);
      break;
    case tsql::Kind::Float:
      if (number) return Variant(sqlite3_column_double(statement, i));
      break;
    case tsql::Kind::Decimal:
      if (storage == SQLITE_INTEGER) {
        return Variant(variant::Decimal{std::to_string(sqlite3_column_int64(statement, i))});
      }
      if (number && std::isfinite(sqlite3_column_double(statement, i))) {
        return Variant(roundedDecimal(sqlite3_column_double(statement, i), type.scale));
      }
      break;
    case tsql::Kind::Date:
      if (!number) return date(statement, i);
      break;
    case tsql::Kind::Null:
      break;
  }
  return asStored(statement, i, storage);
}

}  // namespace tarlo::database
