#pragma once
// Every key of the configuration in one table: reading, printing and the documentation come from
// it.

#include <span>
#include <string_view>
#include <variant>

#include "host/config.h"

namespace tarlo::host {

// Where a key's value lives. Durations are written in seconds, sizes in bytes or plain counts.
using ConfigField = std::variant<std::string Config::*, bool Config::*, std::size_t Config::*,
                                 Milliseconds Config::*, std::size_t WireLimits::*,
                                 Milliseconds WireLimits::*, std::vector<std::string> Config::*>;

struct ConfigKey {
  std::string_view section;
  std::string_view name;
  ConfigField field;
  std::string_view meaning;
  // Numbers: the least and the greatest value allowed, in the unit in which the key is written.
  double least = 0;
  double greatest = 1e12;
};

std::span<const ConfigKey> configKeys();

}  // namespace tarlo::host
