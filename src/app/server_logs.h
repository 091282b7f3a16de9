#pragma once
// The logs of the server: one for what operators need to know, one with a line per request.

#include <spdlog/logger.h>

#include <memory>

#include "host/config.h"
#include "host/wire/server.h"

namespace tarlo::app {

struct ServerLogs {
  std::shared_ptr<spdlog::logger> application;
  std::shared_ptr<spdlog::logger> access;
};

// Throws CommandError (kBadConfig) when a file cannot be written.
ServerLogs openLogs(const host::Config& config);

void logAccess(spdlog::logger& log, const host::WireServer::Options::Access& access);

}  // namespace tarlo::app
