#include "app/config_option.h"

#include "app/exit_code.h"

namespace tarlo::app {

void addConfigOption(CLI::App& command, std::string& file) {
  command.add_option("-c,--config", file, "A configuration file; without it the defaults hold")
      ->type_name("FILE");
}

host::Config readConfig(const std::string& file) {
  if (file.empty()) return {};
  try {
    return host::loadConfig(file);
  } catch (const host::ConfigError& error) {
    throw CommandError(kBadConfig, error.what());
  }
}

}  // namespace tarlo::app
