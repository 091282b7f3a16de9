#include "database/postgresql/open.h"

#include <fmt/format.h>
#include <poll.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "database/postgresql/errors.h"

namespace tarlo::database {
namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kConnectSeconds = "10";

struct FreeOptions {
  void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};
using ParsedString = std::unique_ptr<PQconninfoOption, FreeOptions>;

ParsedString parse(const std::string& connection) {
  char* error = nullptr;
  ParsedString parsed(PQconninfoParse(connection.c_str(), &error));
  // Its message may repeat what stands in the string, a password included.
  PQfreemem(error);
  if (parsed) return parsed;
  const char* text = "The connection string cannot be read.";
  throw DatabaseError(kConnectionFailed, text,
                      {.engine = "postgresql", .code = 0, .sqlState = "08001", .text = text});
}

std::string valueOf(const ParsedString& parsed, std::string_view keyword) {
  for (const PQconninfoOption* option = parsed.get(); option->keyword != nullptr; ++option) {
    if (option->keyword == keyword) return option->val == nullptr ? "" : option->val;
  }
  return "";
}

// The name of this machine's time zone: dates without a zone are its local time.
std::string localZone() {
  const char* named = std::getenv("TZ");
  if (named != nullptr && *named != '\0') return *named == ':' ? named + 1 : named;
  std::error_code ignored;
  const std::string target = std::filesystem::read_symlink("/etc/localtime", ignored).string();
  constexpr std::string_view kFolder = "zoneinfo/";
  const std::size_t at = target.find(kFolder);
  return at == std::string::npos ? "" : target.substr(at + kFolder.size());
}

// For a zone that the server does not know by its name: its offset of today.
std::string localOffset() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return fmt::format("{}", static_cast<double>(local.tm_gmtoff) / 3600.0);
}

bool run(PGconn* handle, const std::string& sql) {
  const PostgresqlResult result(PQexec(handle, sql.c_str()));
  const auto status = PQresultStatus(result.get());
  return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

void configure(PGconn* handle, const OpenOptions& options, bool hasPath) {
  std::string settings =
      "SET standard_conforming_strings=on;SET DateStyle='ISO, YMD';SET extra_float_digits=1";
  if (!hasPath) settings += ";SET search_path=public";
  if (options.readOnly) settings += ";SET default_transaction_read_only=on";
  if (!run(handle, settings)) throw connectError(handle);
  std::string zone = localZone();
  char* quoted = PQescapeLiteral(handle, zone.c_str(), zone.size());
  const bool isKnown =
      !zone.empty() && quoted != nullptr && run(handle, fmt::format("SET TimeZone={}", quoted));
  PQfreemem(quoted);
  if (!isKnown && !run(handle, fmt::format("SET TIME ZONE {}", localOffset()))) {
    throw connectError(handle);
  }
}

using Keywords = std::array<const char*, 6>;

// Of one host, so that the server's errors come with their states; libpq takes its time limit for
// each host by itself only where it blocks.
PostgresqlHandle connectToOne(const Keywords& keys, const Keywords& values, Clock::duration limit) {
  PostgresqlHandle handle(PQconnectStartParams(keys.data(), values.data(), 1));
  if (!handle || PQstatus(handle.get()) == CONNECTION_BAD) return handle;
  PQsetErrorVerbosity(handle.get(), PQERRORS_VERBOSE);
  const auto end = Clock::now() + limit;
  for (auto step = PGRES_POLLING_WRITING; step != PGRES_POLLING_OK;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    pollfd waited{PQsocket(handle.get()),
                  static_cast<short>(step == PGRES_POLLING_READING ? POLLIN : POLLOUT), 0};
    if (left.count() <= 0 || poll(&waited, 1, static_cast<int>(left.count())) == 0) {
      const char* text = "The database server does not answer.";
      throw DatabaseError(kConnectionFailed, text,
                          {.engine = "postgresql",
                           .code = 0,
                           .sqlState = "08001",
                           .text = text,
                           .outage = Outage::Gone});
    }
    step = PQconnectPoll(handle.get());
    if (step == PGRES_POLLING_FAILED) break;
  }
  PQsetErrorVerbosity(handle.get(), PQERRORS_DEFAULT);
  return handle;
}

}  // namespace

PostgresqlHandle openPostgresql(const std::string& connection, const OpenOptions& options) {
  const ParsedString parsed = parse(connection);
  const std::string hosts = valueOf(parsed, "host") + valueOf(parsed, "hostaddr");
  std::string seconds = valueOf(parsed, "connect_timeout");
  if (seconds.empty()) seconds = kConnectSeconds;
  // What stands behind the string holds against it.
  const Keywords keys = {"fallback_application_name", "dbname", "connect_timeout",
                         "client_encoding", nullptr};
  const Keywords values = {"tarloquery", connection.c_str(), seconds.c_str(), "UTF8", nullptr};
  const long limit = std::strtol(seconds.c_str(), nullptr, 10);
  const bool hasMany = hosts.find(',') != std::string::npos || limit <= 0;
  PostgresqlHandle handle = hasMany
                                ? PostgresqlHandle(PQconnectdbParams(keys.data(), values.data(), 1))
                                : connectToOne(keys, values, std::chrono::seconds(limit));
  if (!handle || PQstatus(handle.get()) != CONNECTION_OK) throw connectError(handle.get());
  const bool hasPath = valueOf(parsed, "options").find("search_path") != std::string::npos;
  configure(handle.get(), options, hasPath);
  if (PQsetnonblocking(handle.get(), 1) != 0 || PQenterPipelineMode(handle.get()) != 1) {
    throw connectError(handle.get());
  }
  return handle;
}

std::string describePostgresql(const std::string& connection) {
  const ParsedString parsed = parse(connection);
  return fmt::format("{}:{}/{}", valueOf(parsed, "host") + valueOf(parsed, "hostaddr"),
                     valueOf(parsed, "port"), valueOf(parsed, "dbname"));
}

}  // namespace tarlo::database
