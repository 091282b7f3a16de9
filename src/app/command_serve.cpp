// The sub-command "serve": the web server, until a signal ends it.

#include <fmt/format.h>
#include <malloc.h>
#include <pthread.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <functional>
#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/platform_schema.h"
#include "app/server_logs.h"
#include "database/private_files.h"
#include "host/site/site.h"
#include "host/site/static_files.h"
#include "host/upkeep/upkeep.h"

namespace tarlo::app {
namespace {

constexpr const char* kDemoUser = "admin";

struct ServeOptions {
  std::string connection, listen, config;
  bool demoLink = false;
};

host::Config effectiveConfig(const ServeOptions& options) {
  host::Config config = readConfig(options.config);
  if (!options.connection.empty()) config.database = options.connection;
  if (!options.listen.empty()) config.listen = options.listen;
  return config;
}

// Where the address comes from, for messages.
std::string nameOfListen(const ServeOptions& options) {
  if (!options.listen.empty()) return "--listen";
  return options.config.empty() ? "server.listen" : options.config + ": server.listen";
}

host::Endpoint endpointOf(const host::Config& config, const ServeOptions& options) {
  try {
    return host::parseEndpoint(config.listen, nameOfListen(options));
  } catch (const host::ConfigError& error) {
    throw CommandError(kBadConfig, error.what());
  }
}

// Idle connections are cheap for the server; the system's usual limit is lower than its own.
void raiseFileLimit(std::size_t connections) {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  const rlim_t wanted = connections + 256;
  if (limit.rlim_cur >= wanted) return;
  limit.rlim_cur = std::min(wanted, limit.rlim_max);
  setrlimit(RLIMIT_NOFILE, &limit);
}

// The C library gives every thread a heap of its own, which keeps what the thread has freed. Pages
// come and go on all threads, and two heaps held less than half the memory at the same speed.
void shareHeaps() {
  mallopt(M_ARENA_MAX, 2);
}

// The signals that end the server or make it read its certificate again, blocked in every thread so
// that one place waits for them.
class Signals {
 public:
  Signals() {
    sigemptyset(&set_);
    sigaddset(&set_, SIGINT);
    sigaddset(&set_, SIGTERM);
    sigaddset(&set_, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &set_, nullptr);
    std::signal(SIGPIPE, SIG_IGN);  // a log into a closed pipe must not end the server
    std::signal(SIGXFSZ, SIG_IGN);  // nor a database that reaches the largest file: the write fails
  }
  // The signal that ends the server; `reload` runs at each SIGHUP before it. From here on a second
  // one ends the program at once.
  int waitForEnd(const std::function<void()>& reload) const {
    int signal = 0;
    for (sigwait(&set_, &signal); signal == SIGHUP; sigwait(&set_, &signal)) reload();
    std::signal(SIGHUP, SIG_IGN);
    pthread_sigmask(SIG_UNBLOCK, &set_, nullptr);
    return signal;
  }

 private:
  sigset_t set_;
};

std::unique_ptr<host::WireServer> listen(const host::Config& config, const ServeOptions& given,
                                         const host::Endpoint& endpoint, host::Site& site,
                                         const ServerLogs& logs) {
  host::WireServer::Options options{
      .address = endpoint.address,
      .port = endpoint.port,
      .limits = config.limits,
      .tls = {config.tlsCertificate, config.tlsKey},
      .laneOf = [&site](const auto& request) { return site.laneOf(request); },
      .visitorOf = [&site](const auto& request) { return site.visitorOf(request); },
      .turnDown = [&site](const auto& request, unsigned status,
                          auto& response) { site.turnDown(request, status, response); },
      .onAccess = [log = logs.access](const auto& access) { logAccess(*log, access); },
      .onFailure = [log = logs.application](std::string_view line) { log->warn(line); }};
  try {
    return std::make_unique<host::WireServer>(
        std::move(options),
        [&site](const host::WireRequest& request, host::WireResponse& response) {
          site.handle(request, response);
        });
  } catch (const host::TlsError& error) {
    throw CommandError(kBadConfig, given.config.empty()
                                       ? error.what()
                                       : fmt::format("{}: {}", given.config, error.what()));
  } catch (const std::exception& error) {
    throw CommandError(kCannotListen,
                       fmt::format("{}: the server cannot listen on {}: {}", nameOfListen(given),
                                   config.listen, error.what()));
  }
}

// The address as it is bound: one that stands for all of the machine's is not named otherwise.
std::string baseUrlOf(const host::Config& config, const host::Endpoint& endpoint,
                      std::uint16_t port) {
  const std::string_view scheme = config.tlsCertificate.empty() ? "http" : "https";
  const bool isV6 = endpoint.address.find(':') != std::string::npos;
  return isV6 ? fmt::format("{}://[{}]:{}", scheme, endpoint.address, port)
              : fmt::format("{}://{}:{}", scheme, endpoint.address, port);
}

void warnOfPlainText(const host::Config& config, const host::Endpoint& endpoint,
                     spdlog::logger& log) {
  if (endpoint.isLoopback() || !config.tlsCertificate.empty()) return;
  const std::string line = fmt::format(
      "{} is open to the network without encryption: passwords and sessions can be read on the "
      "way. Set tls.certificate and tls.key, or listen on loopback behind a proxy.",
      config.listen);
  log.warn(line);
  // The log may be a file that nobody looks at now.
  if (!config.logFile.empty()) fmt::print(stderr, "warning: {}\n", line);
}

void reload(host::WireServer& server, const host::Config& config, spdlog::logger& log) {
  if (config.tlsCertificate.empty()) {
    log.info("SIGHUP: there is no certificate to read again");
    return;
  }
  try {
    server.reloadTls();
    log.info("SIGHUP: new connections get the certificate of {}", config.tlsCertificate);
  } catch (const std::exception& error) {
    log.error("SIGHUP: the certificate stays as it was: {}", error.what());
  }
}

void announce(Console console, const std::string& baseUrl, const std::string& link) {
  console.out << fmt::format("Serving {} (Ctrl-C ends it)\n", baseUrl);
  if (!link.empty())
    console.out << fmt::format("Sign in as {}, once and soon:\n{}\n", kDemoUser, link);
  console.out.flush();
}

// The database that the pages work on, in a state in which they can. What is wrong is told with the
// key that names it.
database::Database& openServed(database::Registry& databases, const host::Config& config,
                               spdlog::logger& log) {
  const std::string name = fmt::format("database.connection = {}", config.database);
  database::Database* database = nullptr;
  try {
    database = &databases.find(config.database);
  } catch (const RuntimeError& error) {
    throw CommandError(kNoDatabase, fmt::format("{}: {}\n'tarloquery init' makes a database.", name,
                                                error.description()));
  }
  const database::Health health = database->health(0);
  if (health.trouble != database::Trouble::None) {
    throw CommandError(kNoDatabase, fmt::format("{}: {}", name, health.detail));
  }
  requirePlatform(*database->borrow(), name);
  const std::string file = config.database.substr(config.database.find(':') + 1);
  if (database::isReadableByAll(file)) {
    log.warn("every user of this machine may read the database file {}", file);
  }
  return *database;
}

int serve(Console console, const ServeOptions& options) {
  const host::Config config = effectiveConfig(options);
  const host::Endpoint endpoint = endpointOf(config, options);
  const ServerLogs logs = openLogs(config);
  database::Registry databases(
      {.maxConnections = config.limits.running + config.limits.signIns + 4,
       .commandTimeout = config.statementTime,
       .temporaryBytes = static_cast<std::int64_t>(config.temporaryBytes),
       .temporaryBytesInAll = static_cast<std::int64_t>(config.temporaryBytesInAll),
       .valueBytes = config.rowBytes});
  database::Database& database = openServed(databases, config, *logs.application);
  raiseFileLimit(config.limits.connections);
  shareHeaps();
  const Signals signals;
  host::Site site(config, databases, host::embeddedFiles(), logs.application);
  site.readiness().look();
  const auto server = listen(config, options, endpoint, site, logs);
  server->start();
  const std::string baseUrl = baseUrlOf(config, endpoint, server->port());
  warnOfPlainText(config, endpoint, *logs.application);
  announce(console, baseUrl,
           options.demoLink
               ? freshLink(database, userByLogin(database, kDemoUser), config.linkLife, baseUrl)
               : "");
  logs.application->info("serving {} from {}", baseUrl, config.database);
  auto upkeep =
      std::make_unique<host::Upkeep>(config, databases, site.readiness(), logs.application);
  const int signal = signals.waitForEnd([&] { reload(*server, config, *logs.application); });
  logs.application->info("{}: finishing what is running", signal == SIGINT ? "SIGINT" : "SIGTERM");
  upkeep.reset();
  server->stop();
  logs.application->info("stopped");
  return kDone;
}

}  // namespace

Command addServe(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("serve", "Serve the pages");
  const auto options = std::make_shared<ServeOptions>();
  command
      ->add_option("-d,--database", options->connection,
                   "The database, as sqlite:FILE, in the place of the configured one")
      ->type_name("CONN");
  command
      ->add_option("-l,--listen", options->listen,
                   "Address and port in the place of the configured ones")
      ->type_name("HOST:PORT");
  addConfigOption(*command, options->config);
  command->add_flag("--demo-link", options->demoLink,
                    "Print a link that signs the demo administrator in once");
  command->footer("SIGINT and SIGTERM end it when the running requests are answered.\n\n" +
                  std::string(kExitCodeHelp));
  return {command, [console, options](const Words&) { return serve(console, *options); }};
}

}  // namespace tarlo::app
