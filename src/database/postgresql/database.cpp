#include "database/postgresql/database.h"

#include "database/pool.h"
#include "database/postgresql/connection.h"
#include "database/postgresql/errors.h"
#include "database/postgresql/open.h"

namespace tarlo::database {
namespace {

class PostgresqlDatabase final : public PooledDatabase {
 public:
  PostgresqlDatabase(std::string connection, const OpenOptions& options)
      : PooledDatabase(options), connection_(std::move(connection)) {}
  ~PostgresqlDatabase() override { closeIdle(); }

  // How much room the server has nobody knows from here.
  Health health(std::uint64_t /*reserve*/) const override { return server_.health(); }
  bool isReadOnly() const override { return options_.readOnly; }

 protected:
  std::unique_ptr<PooledConnection> connect() override {
    return std::make_unique<PostgresqlConnection>(
        [this] { return open(); }, server_, translations_, procedures_,
        PostgresqlConnection::Settings{options_.commandTimeout, options_.readOnly});
  }

 private:
  PostgresqlHandle open() {
    try {
      return openPostgresql(connection_, options_);
    } catch (const DatabaseError& error) {
      server_.note(error);
      throw;
    }
  }

  const std::string connection_;
  ServerState server_;
};

}  // namespace

std::unique_ptr<Database> openPostgresqlDatabase(std::string connection,
                                                 const OpenOptions& options) {
  auto database = std::make_unique<PostgresqlDatabase>(std::move(connection), options);
  const Lease trial = database->borrow();
  return database;
}

void runPostgresqlScript(const std::string& connection, const std::string& script) {
  const PostgresqlHandle handle = openPostgresql(connection, {});
  PQexitPipelineMode(handle.get());
  PQsetnonblocking(handle.get(), 0);
  const PostgresqlResult result(PQexec(handle.get(), script.c_str()));
  const auto status = PQresultStatus(result.get());
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) throw postgresqlError(result.get());
}

}  // namespace tarlo::database
