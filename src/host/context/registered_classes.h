#pragma once
// Classes of other libraries that pages may create by name, as the registry file lists them.

#include <spdlog/logger.h>

#include <string>

#include "host/context/http_server.h"

namespace tarlo::host {

// Adds a factory for each registered class, in the place of one of the same name. The component of
// this program itself is passed over. A library that cannot be loaded takes no place: the log says
// so. Throws bridge::RegistryError for a file that must not be trusted or cannot be read as one.
void addRegisteredClasses(const std::string& registry, ObjectFactories& factories,
                          spdlog::logger& log);

}  // namespace tarlo::host
