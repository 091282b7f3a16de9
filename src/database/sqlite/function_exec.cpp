// The procedures that statements call.

#include <string>
#include <vector>

#include "database/procedures.h"
#include "database/sqlite/function_call.h"
#include "database/sqlite/functions.h"
#include "variant/convert.h"

namespace tarlo::database {
namespace {

Variant toVariant(sqlite3_value* value, std::string_view text) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
      return Variant(variant::Null{});
    case SQLITE_INTEGER: {
      const std::int64_t number = sqlite3_value_int64(value);
      const auto small = static_cast<std::int32_t>(number);
      return small == number ? Variant(small) : Variant(number);
    }
    case SQLITE_FLOAT:
      return Variant(sqlite3_value_double(value));
    default:
      return Variant(text);
  }
}

void giveVariant(FunctionCall& call, const Variant& value) {
  switch (value.state()) {
    case variant::State::Empty:
    case variant::State::Null:
      return call.giveNull();
    case variant::State::Int16:
    case variant::State::Int32:
    case variant::State::Int64:
      return call.give(variant::toInt64(value));
    case variant::State::Double:
    case variant::State::Decimal:
      return call.give(variant::toDouble(value));
    default:
      return call.give(std::string_view(variant::toText(value)));
  }
}

void exec(sqlite3_context* context, int count, sqlite3_value** values) {
  const auto& procedures = *static_cast<const ProcedureTable*>(sqlite3_user_data(context));
  FunctionCall call(context, count, values);
  try {
    if (count == 0) throw FunctionError("a procedure needs a name");
    const auto found = procedures.byFoldedName.find(text::foldedName(call.text(0)));
    if (found == procedures.byFoldedName.end()) {
      throw FunctionError("unknown procedure " + std::string(call.text(0)));
    }
    std::vector<Variant> inputs;
    for (int i = 1; i < count; ++i) inputs.push_back(toVariant(call.raw(i), call.text(i)));
    giveVariant(call, found->second(inputs));
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  } catch (const std::exception& error) {
    sqlite3_result_error(context, error.what(), -1);
  }
}

}  // namespace

int registerExec(sqlite3* handle, const ProcedureTable& procedures) {
  // SQLite hands the table back untouched. Neither deterministic nor innocuous: it is the host's
  // code, which a file's own views and triggers must not reach.
  void* data = const_cast<ProcedureTable*>(&procedures);
  return sqlite3_create_function_v2(handle, "tsql_exec", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, data,
                                    exec, nullptr, nullptr, nullptr);
}

}  // namespace tarlo::database
