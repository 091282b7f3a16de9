#include "database/sqlite/function_call.h"

#include "database/sqlite/deadline.h"

#include <fmt/format.h>

#include <cmath>
#include <new>

#include "tsql/resolve/literal_value.h"

namespace tarlo::database {
namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;

// Texts stand in messages shortened: a message is for a log line.
std::string shown(std::string_view text) {
  constexpr std::size_t kMost = 60;
  return text.size() <= kMost ? std::string(text) : std::string(text.substr(0, kMost)) + "...";
}

}  // namespace

std::string_view FunctionCall::text(int i) const {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(values_[i]));
  return bytes ? std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(values_[i])))
               : std::string_view();
}

std::int64_t FunctionCall::integer(int i) const {
  if (isInteger(i)) return sqlite3_value_int64(values_[i]);
  if (isText(i)) {
    const auto value = tsql::parseInteger(text(i));
    if (value) return *value;
    throw FunctionError(fmt::format("conversion failed: '{}' is not an integer", shown(text(i))));
  }
  const double value = std::trunc(sqlite3_value_double(values_[i]));
  if (!(value >= -kTwoTo63 && value < kTwoTo63)) {
    throw FunctionError("arithmetic overflow: the value is too large for an integer");
  }
  return static_cast<std::int64_t>(value);
}

double FunctionCall::number(int i) const {
  if (!isText(i)) return sqlite3_value_double(values_[i]);
  const auto value = tsql::parseNumber(text(i));
  if (value) return *value;
  throw FunctionError(fmt::format("conversion failed: '{}' is not a number", shown(text(i))));
}

void FunctionCall::give(double value) {
  if (!std::isfinite(value)) throw FunctionError("arithmetic overflow");
  sqlite3_result_double(context_, value);
}

void FunctionCall::give(std::string_view value) {
  // A view without data is the empty text, which SQLite would take for NULL.
  const char* bytes = value.data() ? value.data() : "";
  sqlite3_result_text64(context_, bytes, value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void WorkMeter::ask() {
  done_ = 0;
  if (SqliteDeadline::isOverHere()) throw FunctionEnd();
}

void runFunction(sqlite3_context* context, int count, sqlite3_value** values) {
  const auto& row = *static_cast<const FunctionRow*>(sqlite3_user_data(context));
  FunctionCall call(context, count, values);
  if (row.nulls == Nulls::Propagate) {
    for (int i = 0; i < count; ++i) {
      if (call.isNull(i)) return call.giveNull();
    }
  }
  try {
    // Long texts cost time in every function, and a sum of them has few steps of SQLite's own.
    std::size_t bytes = 0;
    for (int i = 0; i < count; ++i) {
      if (call.isText(i)) bytes += static_cast<std::size_t>(sqlite3_value_bytes(values[i]));
    }
    WorkMeter().add(bytes);
    row.body(call);
  } catch (const FunctionEnd&) {
    sqlite3_result_error_code(context, SQLITE_INTERRUPT);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  } catch (const std::exception& error) {
    sqlite3_result_error(context, error.what(), -1);
  }
}

}  // namespace tarlo::database
