#pragma once
// The option --config of the commands that read a configuration.

#include <CLI/CLI.hpp>
#include <string>

#include "host/config.h"

namespace tarlo::app {

void addConfigOption(CLI::App& command, std::string& file);

// The defaults for "". Throws CommandError (kBadConfig).
host::Config readConfig(const std::string& file);

}  // namespace tarlo::app
