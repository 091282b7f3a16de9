#pragma once
// The schema scripts that the binary carries, in the order in which they run.

#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"

namespace tarlo::app {

struct Script {
  std::string_view name;  // "tables/10_schemes.sql"
  std::string_view text;
};

// The tables and the rows that every installation has.
std::vector<Script> tableScripts();
// The demo business and its schemes, as they were when the schemes were compiled.
std::vector<Script> demoScripts();
// What happened to the demo business since: it runs when the schemes hold their statements.
std::vector<Script> laterDemoScripts();

// Throws CommandError (kFailed) with the script's name and line.
void runScripts(database::Connection& connection, const std::vector<Script>& scripts);

// Names that the scripts create, in order.
std::vector<std::string> tablesMadeBy(const std::vector<Script>& scripts);

}  // namespace tarlo::app
