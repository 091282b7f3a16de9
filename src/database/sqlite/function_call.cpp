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

void FunctionCall::giveBytes(std::string_view value) {
  sqlite3_result_blob64(context_, value.data(), value.size(), SQLITE_TRANSIENT);
}

void WorkMeter::ask() {
  done_ = 0;
  if (SqliteDeadline::isOverHere()) throw FunctionEnd();
}

namespace {

// What the body throws becomes the statement's error.
template <class Body>
void guarded(const FunctionCall& call, const Body& body) {
  sqlite3_context* context = call.context();
  try {
    // Long texts cost time in every function, and a sum of them has few steps of SQLite's own.
    std::size_t bytes = 0;
    for (int i = 0; i < call.count(); ++i) {
      if (call.isText(i)) bytes += static_cast<std::size_t>(sqlite3_value_bytes(call.raw(i)));
    }
    WorkMeter().add(bytes);
    body();
  } catch (const FunctionEnd&) {
    sqlite3_result_error_code(context, SQLITE_INTERRUPT);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  } catch (const std::exception& error) {
    sqlite3_result_error(context, error.what(), -1);
  }
}

// SQLite gives zeroed memory for the pointer; without `bytes` only where there was a row.
Aggregate** aggregateOf(sqlite3_context* context, int bytes) {
  return static_cast<Aggregate**>(sqlite3_aggregate_context(context, bytes));
}

void stepAggregate(sqlite3_context* context, int count, sqlite3_value** values) {
  FunctionCall call(context, count, values);
  if (call.isNull(0)) return;
  guarded(call, [&] {
    Aggregate** aggregate = aggregateOf(context, sizeof(Aggregate*));
    if (!aggregate) throw std::bad_alloc();
    const auto& row = *static_cast<const AggregateRow*>(sqlite3_user_data(context));
    if (!*aggregate) *aggregate = row.make().release();
    (*aggregate)->step(call);
  });
}

// Called after an error too, so that nothing is leaked.
void finishAggregate(sqlite3_context* context) {
  FunctionCall call(context, 0, nullptr);
  Aggregate** aggregate = aggregateOf(context, 0);
  if (!aggregate || !*aggregate) return call.giveNull();
  const std::unique_ptr<Aggregate> owned(*aggregate);
  guarded(call, [&] { owned->finish(call); });
}

}  // namespace

void runFunction(sqlite3_context* context, int count, sqlite3_value** values) {
  const auto& row = *static_cast<const FunctionRow*>(sqlite3_user_data(context));
  FunctionCall call(context, count, values);
  if (row.nulls == Nulls::Propagate) {
    for (int i = 0; i < count; ++i) {
      if (call.isNull(i)) return call.giveNull();
    }
  }
  guarded(call, [&] { row.body(call); });
}

int registerAggregate(sqlite3* handle, const AggregateRow& row) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  // SQLite hands the row back untouched.
  void* data = const_cast<AggregateRow*>(&row);
  return sqlite3_create_function_v2(handle, row.name, row.arity, kFlags, data, nullptr,
                                    stepAggregate, finishAggregate, nullptr);
}

}  // namespace tarlo::database
