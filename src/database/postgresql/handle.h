#pragma once
// Owners of what libpq makes.

#include <libpq-fe.h>

#include <memory>

namespace tarlo::database {

struct FinishPostgresql {
  void operator()(PGconn* handle) const { PQfinish(handle); }
};
using PostgresqlHandle = std::unique_ptr<PGconn, FinishPostgresql>;

struct ClearPostgresql {
  void operator()(PGresult* result) const { PQclear(result); }
};
using PostgresqlResult = std::unique_ptr<PGresult, ClearPostgresql>;

}  // namespace tarlo::database
