#include "database/sqlite/bind.h"

namespace tarlo::database {
namespace {

int bindOne(sqlite3_stmt* statement, int index, const tsql::BoundValue& value, TextLife life) {
  switch (value.storage) {
    case tsql::BoundValue::Storage::Integer:
      return sqlite3_bind_int64(statement, index, value.integer);
    case tsql::BoundValue::Storage::Real:
      return sqlite3_bind_double(statement, index, value.real);
    case tsql::BoundValue::Storage::Text:
      break;
  }
  // A converted text goes with `value`, before the statement runs.
  const bool owned = !value.owned.empty();
  const std::string_view text = owned ? std::string_view(value.owned) : value.text;
  // An empty view may have no address, which SQLite would take for NULL.
  const char* data = text.empty() ? "" : text.data();
  const bool stays = life == TextLife::WholeRun && !owned;
  return sqlite3_bind_text64(statement, index, data, text.size(),
                             stays ? SQLITE_STATIC : SQLITE_TRANSIENT, SQLITE_UTF8);
}

}  // namespace

int bindLiterals(sqlite3_stmt* statement, const tsql::Step& step, const tsql::Shape& shape,
                 TextLife life) {
  int index = 0;
  for (const tsql::Parameter& parameter : step.parameters) {
    const auto& literal = shape.literals.at(static_cast<std::size_t>(parameter.ordinal));
    const tsql::BoundValue value =
        tsql::convertLiteral(literal.literalClass, literal.text, parameter);
    const int code = bindOne(statement, ++index, value, life);
    if (code != SQLITE_OK) return code;
  }
  return SQLITE_OK;
}

}  // namespace tarlo::database
