#include "database/sqlite/authorizer.h"

namespace tarlo::database {

using tsql::Access;

void Authorizer::install(sqlite3* handle) {
  sqlite3_set_authorizer(handle, &Authorizer::authorize, this);
}

int Authorizer::touch(Access access, std::string_view name) {
  seen_.add(access, name);
  return guard_.context() == nullptr || guard_.mayTouch(access, name) ? SQLITE_OK : SQLITE_DENY;
}

int Authorizer::judge(int action, std::string_view first, std::string_view second, bool isInside) {
  constexpr std::string_view kCallsProcedure = "tsql_exec";
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_RECURSIVE:
    case SQLITE_TRANSACTION:
    case SQLITE_SAVEPOINT:
      return SQLITE_OK;
    case SQLITE_READ:
      // Inside a view or a trigger its maker decides; the view itself has been asked for by name.
      return isInside ? SQLITE_OK : touch(Access::Read, first);
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
      return isInside ? SQLITE_OK : touch(Access::Write, first);
    case SQLITE_DELETE:
      return isInside ? SQLITE_OK : touch(Access::Delete, first);
    case SQLITE_FUNCTION:
      return second == kCallsProcedure ? touch(Access::Execute, second) : SQLITE_OK;
    default:
      // Definitions, pragmas, attached files: for connections that nobody has narrowed.
      return guard_.context() == nullptr ? SQLITE_OK : SQLITE_DENY;
  }
}

int Authorizer::authorize(void* self, int action, const char* first, const char* second,
                          const char* /*database*/, const char* inside) {
  auto& authorizer = *static_cast<Authorizer*>(self);
  if (!authorizer.isWatching_) return SQLITE_OK;
  const auto view = [](const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
  };
  return authorizer.judge(action, view(first), view(second), inside != nullptr);
}

}  // namespace tarlo::database
