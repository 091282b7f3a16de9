// tsql_single: the value of a scalar sub-query, an error when it has a second row.

#include "database/sqlite/function_call.h"

namespace tarlo::database {
namespace {

// SQLite gives zeroed memory for it.
struct Single {
  sqlite3_value* value;
};

void step(sqlite3_context* context, int, sqlite3_value** values) {
  auto* state = static_cast<Single*>(sqlite3_aggregate_context(context, sizeof(Single)));
  if (!state) return sqlite3_result_error_nomem(context);
  if (state->value) {
    return sqlite3_result_error(context, "a sub-query used as a value gave more than one row", -1);
  }
  state->value = sqlite3_value_dup(values[0]);
  if (!state->value) sqlite3_result_error_nomem(context);
}

// Called after an error too, so that nothing is leaked.
void finish(sqlite3_context* context) {
  auto* state = static_cast<Single*>(sqlite3_aggregate_context(context, 0));
  if (!state || !state->value) return sqlite3_result_null(context);
  sqlite3_result_value(context, state->value);
  sqlite3_value_free(state->value);
}

}  // namespace

int registerAggregates(sqlite3* handle) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  return sqlite3_create_function_v2(handle, "tsql_single", 1, kFlags, nullptr, nullptr, step,
                                    finish, nullptr);
}

}  // namespace tarlo::database
