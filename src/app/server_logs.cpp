#include "app/server_logs.h"

#include <fmt/format.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include "app/exit_code.h"
#include "database/private_files.h"
#include "host/site/log_text.h"

namespace tarlo::app {
namespace {

constexpr const char* kPattern = "%Y-%m-%d %H:%M:%S.%e %l %v";

spdlog::sink_ptr sinkFor(const std::string& file) {
  if (file.empty()) return std::make_shared<spdlog::sinks::stderr_sink_mt>();
  database::makePrivateFile(file);  // where it cannot be made, the sink says why
  try {
    return std::make_shared<spdlog::sinks::basic_file_sink_mt>(file);
  } catch (const spdlog::spdlog_ex& error) {
    throw CommandError(kBadConfig, fmt::format("The log cannot be written: {}", error.what()));
  }
}

// One-time links stand in the query of the sign-in's address.
std::string_view withoutSecrets(std::string_view target) {
  return target.starts_with("/sign-in") ? target.substr(0, target.find('?')) : target;
}

}  // namespace

ServerLogs openLogs(const host::Config& config) {
  const spdlog::sink_ptr sink = sinkFor(config.logFile);
  const spdlog::sink_ptr accessSink = config.accessLog.empty() ? sink : sinkFor(config.accessLog);
  ServerLogs logs{std::make_shared<spdlog::logger>("application", sink),
                  std::make_shared<spdlog::logger>("access", accessSink)};
  for (const auto& logger : {logs.application, logs.access}) {
    logger->set_level(spdlog::level::from_str(config.logLevel));
    logger->flush_on(spdlog::level::debug);
    logger->set_pattern(kPattern);
  }
  if (!config.accessLog.empty()) logs.access->set_level(spdlog::level::info);
  return logs;
}

void logAccess(spdlog::logger& log, const host::WireServer::Options::Access& access) {
  log.info("{} {} {} {} {} {} {:.1f}ms", access.id, access.remote, access.method,
           host::logText(withoutSecrets(access.target)), access.status, access.bytes,
           static_cast<double>(access.duration.count()) / 1000);
}

}  // namespace tarlo::app
