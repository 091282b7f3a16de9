#include "tsql/print/postgresql_types.h"

#include <fmt/format.h>

#include <algorithm>

#include "tsql/resolve/type_names.h"

namespace tarlo::tsql {
namespace {

// A typmod counts its own four bytes.
constexpr int kHeader = 4;

struct Entry {
  std::string_view typname;
  Kind kind;
  bool isCast;
};
// timestamp is cast unless it has three digits, as the system's own columns have.
constexpr Entry kEntries[] = {
    {"int4", Kind::Int, false},        {"int2", Kind::Int, false},
    {"int8", Kind::Int, false},        {"bool", Kind::Int, true},
    {"numeric", Kind::Decimal, false}, {"float8", Kind::Float, false},
    {"float4", Kind::Float, false},    {"timestamp", Kind::Date, true},
    {"timestamptz", Kind::Date, true}, {"date", Kind::Date, true},
    {"varchar", Kind::Text, false},    {"text", Kind::Text, false},
    {"bpchar", Kind::Text, true},      {"name", Kind::Text, true},
    {"uuid", Kind::Text, true},        {"json", Kind::Text, true},
    {"jsonb", Kind::Text, true},       {"xml", Kind::Text, true},
    {"inet", Kind::Text, true},        {"cidr", Kind::Text, true},
    {"macaddr", Kind::Text, true},
};

Type decimal(int typmod) {
  constexpr int kMost = 38;
  if (typmod < kHeader) return decimalType(kMost, 10);
  const int precision = (typmod - kHeader) >> 16;
  const int scale = (typmod - kHeader) & 0x7FF;
  if (precision > kMost || scale > precision) return decimalType(kMost, 10);
  return decimalType(static_cast<std::uint8_t>(precision), static_cast<std::uint8_t>(scale));
}

Type sizedText(int typmod) {
  Type type = kTextType;
  const int length = typmod - kHeader;
  if (length > 0 && length <= 0xFFFF) type.length = static_cast<std::uint16_t>(length);
  return type;
}

}  // namespace

std::string postgresqlType(Type type, std::string_view typeName) {
  switch (type.kind) {
    case Kind::Int:
      return findTypeName(typeName) == TypeName::Bigint ? "bigint" : "integer";
    case Kind::Decimal:
      return fmt::format("numeric({},{})", type.precision, type.scale);
    case Kind::Float:
      return "double precision";
    case Kind::Date:
      return "timestamp(3)";
    default:
      return type.length == 0 ? "text" : fmt::format("varchar({})", type.length);
  }
}

std::string_view postgresqlCast(Kind kind) {
  switch (kind) {
    case Kind::Int:
      return "int4";
    case Kind::Decimal:
      return "numeric";
    case Kind::Float:
      return "float8";
    case Kind::Date:
      return "timestamp(3)";
    default:
      return "text";
  }
}

std::optional<PostgresqlColumnType> typeOfPostgresql(std::string_view typname, int typmod) {
  const auto* entry = std::ranges::find(kEntries, typname, &Entry::typname);
  if (entry == std::end(kEntries)) return {};
  PostgresqlColumnType column{Type{entry->kind}, entry->isCast ? std::string(typname) : ""};
  if (entry->kind == Kind::Decimal) column.type = decimal(typmod);
  const bool isSized = typname == "varchar" || typname == "bpchar";
  if (isSized) column.type = sizedText(typmod);
  constexpr int kMilliseconds = 3;
  if (typname == "timestamp" && typmod == kMilliseconds) column.storedAs.clear();
  return column;
}

}  // namespace tarlo::tsql
