// Conversions between kinds. PostgreSQL rounds where the language cuts, and reads texts more freely
// than the language does.

#include <fmt/format.h>

#include "tsql/print/postgresql_engine.h"
#include "tsql/print/printing.h"
#include "tsql/resolve/type_names.h"

namespace tarlo::tsql::print {
namespace {

std::string sized(const std::string& text, Type type) {
  return fmt::format("{}::numeric({},{})", text, type.precision, type.scale);
}

std::string days(const std::string& date) {
  return fmt::format("tarlo.days_of_date({})", date);
}

std::string textOf(const std::string& text, Type from, int dateStyle = 0) {
  switch (from.kind) {
    case Kind::Decimal:
      return fmt::format("round({}, {})::text", text, from.scale);
    case Kind::Float:
      return fmt::format("tarlo.float_text({})", text);
    case Kind::Date:
      return postgresqlDateText(text, dateStyle);
    case Kind::Text:
      return text;
    default:
      return text + "::text";
  }
}

std::string castToInt(const std::string& text, Type from, TypeName name) {
  std::string number = text;
  // A date becomes the nearest day, other values lose their fraction.
  if (from.kind == Kind::Date) number = fmt::format("round({})", days(text));
  if (from.kind == Kind::Decimal || from.kind == Kind::Float) {
    number = fmt::format("trunc({})", text);
  }
  if (from.kind == Kind::Text) number = fmt::format("tarlo.integer_of({})", text);
  switch (name) {
    case TypeName::Bit:
      return fmt::format("({}::int8 <> 0)::int4", number);
    case TypeName::Tinyint:
      return fmt::format("tarlo.byte_of({}::int8)", number);
    case TypeName::Smallint:
      return number + "::int2::int4";
    case TypeName::Bigint:
      return number + "::int8";
    default:
      return number + "::int4";
  }
}

std::string castToText(const std::string& text, Type from, const ast::Cast& cast, TypeName name,
                       Type to) {
  const std::string whole = textOf(text, from, std::max(cast.style, 0));
  if (to.length == 0) return whole;
  const bool isPadded = name == TypeName::Char;
  if (!isNumeric(from)) {
    return fmt::format("tarlo.{}({}, {})", isPadded ? "pad" : "left", whole, to.length);
  }
  const bool wide = cast.typeName[0] == 'n' || cast.typeName[0] == 'N';
  const std::string fitting =
      fmt::format("tarlo.narrow({}, {}, {})", whole, to.length, from.kind == Kind::Int && !wide);
  return isPadded ? fmt::format("tarlo.pad({}, {})", fitting, to.length) : fitting;
}

}  // namespace

std::string PostgresqlEngine::convert(std::string text, Type from, Type to) const {
  if (from.kind == to.kind || to.kind == Kind::Null) return text;
  if (from.kind == Kind::Null) return fmt::format("{}::{}", text, postgresqlCast(to.kind));
  switch (to.kind) {
    case Kind::Text:
      return textOf(text, from);
    case Kind::Int:
      return castToInt(text, from, TypeName::Int);
    case Kind::Decimal:
      if (from.kind == Kind::Text) return sized(fmt::format("tarlo.decimal_of({})", text), to);
      return from.kind == Kind::Int ? text : sized(text, to);
    case Kind::Float:
      if (from.kind == Kind::Text) return fmt::format("tarlo.float_of({})", text);
      return text + "::float8";
    default:
      if (from.kind == Kind::Text) return fmt::format("tarlo.date_of({})", text);
      return fmt::format("tarlo.date_of_days({}::float8)", text);
  }
}

std::string PostgresqlEngine::cast(Writer& writer, const ast::Cast& cast, Position position) const {
  const Type from = cast.operand->type;
  const std::string text = bareValue(writer, *cast.operand);
  const Type to = typeOf(cast.typeName, cast.typeSizes, TypeUse::Cast, position);
  const TypeName name = findTypeName(cast.typeName).value_or(TypeName::Int);
  if (from.kind == Kind::Null) return fmt::format("{}::{}", text, postgresqlCast(to.kind));
  switch (to.kind) {
    case Kind::Int:
      return castToInt(text, from, name);
    case Kind::Decimal:
      if (from.kind == Kind::Date) return sized(days(text), to);
      return from.kind == Kind::Text ? convert(text, from, to) : sized(text, to);
    case Kind::Float:
      return from.kind == Kind::Date ? days(text) + "::float8" : convert(text, from, to);
    case Kind::Date: {
      const std::string date = convert(text, from, to);
      return name == TypeName::Date ? fmt::format("date_trunc('day', {})", date) : date;
    }
    default:
      return castToText(text, from, cast, name, to);
  }
}

// Sizes are enforced by the column: it rounds decimals, cuts blanks beyond its length and refuses
// what is longer.
std::string PostgresqlEngine::stored(std::string text, const Column& column) const {
  return column.storedAs.empty() ? text : text + "::" + column.storedAs;
}

std::string PostgresqlEngine::written(std::string text, Type from, const Column& column) const {
  if (from.kind == Kind::Null) return text;
  const bool isNumber = isNumeric(from) && isNumeric(column.type);
  if (isNumber && column.type.kind != Kind::Int) return text;
  if (from.kind == Kind::Text && column.type.kind == Kind::Decimal) {
    return fmt::format("tarlo.decimal_of({})", text);
  }
  return stored(convert(std::move(text), from, column.type), column);
}

std::string PostgresqlEngine::columnValue(std::string text, const Column& column) const {
  if (column.storedAs.empty()) return text;
  return fmt::format("{}::{}", text, postgresqlCast(column.type.kind));
}

}  // namespace tarlo::tsql::print
