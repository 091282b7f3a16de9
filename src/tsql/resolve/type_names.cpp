#include "tsql/resolve/type_names.h"

#include <fmt/format.h>

#include "text/fold.h"
#include "tsql/error.h"

namespace tarlo::tsql {
namespace {

struct Entry {
  std::string_view name;
  TypeName type;
};

constexpr Entry kTypeNames[] = {
    {"int", TypeName::Int},           {"bigint", TypeName::Bigint},
    {"smallint", TypeName::Smallint}, {"tinyint", TypeName::Tinyint},
    {"bit", TypeName::Bit},           {"decimal", TypeName::Decimal},
    {"numeric", TypeName::Decimal},   {"money", TypeName::Money},
    {"float", TypeName::Float},       {"real", TypeName::Real},
    {"varchar", TypeName::Varchar},   {"nvarchar", TypeName::Varchar},
    {"char", TypeName::Char},         {"nchar", TypeName::Char},
    {"datetime", TypeName::Datetime}, {"smalldatetime", TypeName::Smalldatetime},
    {"date", TypeName::Date},
};

constexpr int kDateStyles[] = {0,   20,  21,  23,  100, 101, 102, 103,
                               104, 105, 108, 111, 112, 120, 121, 126};

[[noreturn]] void refuseSizes(std::string_view name, Position position) {
  throw StatementError(Refusal::Kind, position,
                       fmt::format("type {} does not take this size", name));
}

Type sizedDecimal(std::string_view name, const std::vector<int>& sizes, Position position) {
  const int precision = sizes.empty() ? 18 : sizes[0];
  const int scale = sizes.size() < 2 ? 0 : sizes[1];
  if (sizes.size() > 2 || precision < 1 || precision > 38 || scale < 0 || scale > precision) {
    refuseSizes(name, position);
  }
  return decimalType(static_cast<std::uint8_t>(precision), static_cast<std::uint8_t>(scale));
}

Type sizedText(std::string_view name, TypeName type, const std::vector<int>& sizes, TypeUse use,
               Position position) {
  const bool wide = text::raised(name[0]) == 'N';
  const int without = use == TypeUse::Cast ? 30 : 1;
  const int length = sizes.empty() ? without : sizes[0];
  const bool isMax = length == -1 && type == TypeName::Varchar;
  if (sizes.size() > 1 || (!isMax && (length < 1 || length > (wide ? 4000 : 8000)))) {
    refuseSizes(name, position);
  }
  Type result = kTextType;
  result.length = isMax ? 0 : static_cast<std::uint16_t>(length);
  return result;
}

}  // namespace

std::optional<TypeName> findTypeName(std::string_view name) {
  for (const Entry& entry : kTypeNames) {
    if (text::equalsNoCase(entry.name, name)) return entry.type;
  }
  return std::nullopt;
}

Type typeOf(std::string_view name, const std::vector<int>& sizes, TypeUse use, Position position) {
  const auto type = findTypeName(name);
  if (!type) {
    throw StatementError(Refusal::Name, position, fmt::format("unknown type {}", name));
  }
  switch (*type) {
    case TypeName::Decimal:
      return sizedDecimal(name, sizes, position);
    case TypeName::Varchar:
    case TypeName::Char:
      return sizedText(name, *type, sizes, use, position);
    case TypeName::Float:
      if (sizes.size() > 1 || (sizes.size() == 1 && (sizes[0] < 1 || sizes[0] > 53))) {
        refuseSizes(name, position);
      }
      return kFloatType;
    default:
      break;
  }
  if (!sizes.empty()) refuseSizes(name, position);
  switch (*type) {
    case TypeName::Money:
      return decimalType(19, 4);
    case TypeName::Real:
      return kFloatType;
    case TypeName::Datetime:
    case TypeName::Smalldatetime:
    case TypeName::Date:
      return kDateType;
    default:
      return kIntType;
  }
}

bool isDateStyle(int style) {
  return std::find(std::begin(kDateStyles), std::end(kDateStyles), style) != std::end(kDateStyles);
}

}  // namespace tarlo::tsql
