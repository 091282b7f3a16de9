#pragma once
// The option --database of every command that works on one.

#include <CLI/CLI.hpp>
#include <string>

#include "database/database.h"

namespace tarlo::app {

inline constexpr const char* kDefaultDatabase = "sqlite:data/tarlo.db";

void addDatabaseOption(CLI::App& command, std::string& connection);

// Tries a connection before the command begins: operations that go on after an error would hide a
// missing database. Throws CommandError (kNoDatabase).
database::Database& openForCommand(database::Registry& databases, const std::string& connection);

}  // namespace tarlo::app
