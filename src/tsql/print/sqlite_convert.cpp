// Conversions between kinds. Decimals are reals in SQLite, dates are canonical texts; an integer
// serves wherever a number of another kind is wanted.

#include <fmt/format.h>

#include "tsql/print/printing.h"
#include "tsql/print/sqlite_engine.h"
#include "tsql/resolve/type_names.h"

namespace tarlo::tsql::print {
namespace {

std::string decimal(const std::string& text, Type type) {
  return fmt::format("tsql_decimal({}, {}, {})", text, type.scale, type.precision);
}

std::string textOf(std::string text, Type from, int dateStyle = 0) {
  switch (from.kind) {
    case Kind::Int:
      return fmt::format("CAST({} AS TEXT)", text);
    case Kind::Decimal:
      return fmt::format("tsql_decimal_text({}, {})", text, from.scale);
    case Kind::Float:
      return fmt::format("tsql_float_text({})", text);
    case Kind::Date:
      return fmt::format("tsql_format_date({}, {})", text, dateStyle);
    default:
      return text;
  }
}

int bitsOf(TypeName name) {
  switch (name) {
    case TypeName::Tinyint:
      return 8;
    case TypeName::Smallint:
      return 16;
    case TypeName::Int:
      return 32;
    default:
      return 64;
  }
}

std::string castToInt(const std::string& text, Type from, TypeName name) {
  // A date becomes the nearest day, other values lose their fraction.
  const std::string number =
      from.kind == Kind::Date ? fmt::format("tsql_round(tsql_date_days({}), 0, 0)", text) : text;
  if (name == TypeName::Bit) return fmt::format("(tsql_int({}) <> 0)", number);
  return fmt::format("tsql_int({}, {})", number, bitsOf(name));
}

std::string castToText(const std::string& text, Type from, const ast::Cast& cast, TypeName name,
                       Type to) {
  const std::string whole = textOf(text, from, std::max(cast.style, 0));
  if (to.length == 0) return whole;
  if (isNumeric(from)) {
    const bool wide = cast.typeName[0] == 'n' || cast.typeName[0] == 'N';
    const std::string fitting = fmt::format("tsql_narrow({}, {}, {})", whole, to.length,
                                            from.kind == Kind::Int && !wide ? 1 : 0);
    return name == TypeName::Char ? fmt::format("tsql_pad({}, {})", fitting, to.length) : fitting;
  }
  return fmt::format("{}({}, {})", name == TypeName::Char ? "tsql_pad" : "tsql_left", whole,
                     to.length);
}

}  // namespace

std::string SqliteEngine::convert(std::string text, Type from, Type to) const {
  if (from.kind == to.kind || from.kind == Kind::Null || to.kind == Kind::Null) return text;
  switch (to.kind) {
    case Kind::Text:
      return textOf(std::move(text), from);
    case Kind::Int:
      return print::call("tsql_int", {text});
    case Kind::Decimal:
      return from.kind == Kind::Int ? text : decimal(text, to);
    case Kind::Float:
      return isNumeric(from) ? text : print::call("tsql_real", {text});
    default:
      return print::call("tsql_date", {text});
  }
}

std::string SqliteEngine::cast(Writer& writer, const ast::Cast& cast, Position position) const {
  const Type from = cast.operand->type;
  const std::string text = bareValue(writer, *cast.operand);
  const Type to = typeOf(cast.typeName, cast.typeSizes, TypeUse::Cast, position);
  const TypeName name = findTypeName(cast.typeName).value_or(TypeName::Int);
  switch (to.kind) {
    case Kind::Int:
      return castToInt(text, from, name);
    case Kind::Decimal:
      return decimal(from.kind == Kind::Date ? print::call("tsql_date_days", {text}) : text, to);
    case Kind::Float:
      return from.kind == Kind::Date ? print::call("tsql_date_days", {text})
                                     : print::call("tsql_real", {text});
    case Kind::Date:
      return print::call(name == TypeName::Date ? "tsql_day_start" : "tsql_date", {text});
    default:
      return castToText(text, from, cast, name, to);
  }
}

std::string SqliteEngine::written(std::string text, Type from, const Column& column) const {
  const Type to = column.type;
  if (from.kind == Kind::Null) return text;
  if (to.kind == Kind::Decimal) return decimal(text, to);
  text = convert(std::move(text), from, to);
  const bool fits = to.length == 0 || (from.length > 0 && from.length <= to.length);
  if (to.kind != Kind::Text || fits) return text;
  return fmt::format("tsql_fit({}, {}, {})", text, to.length, quoted(column.name));
}

}  // namespace tarlo::tsql::print
