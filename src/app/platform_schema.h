#pragma once
// How a database's tables compare with those that this program works with. What is expected is read
// from the very scripts that `init` runs.

#include <string>
#include <vector>

#include "database/database.h"

namespace tarlo::app {

// One step from the tables of an older program to those of this one. Steps only add.
struct UpgradeStep {
  std::string what;       // "table Zembra_Icon", "column Zembra_Menu.Menu_Order"; "" for a step
                          // that belongs to the one before it: an index, rows of a new table
  std::string statement;  // T-SQL
};

// What is missing, in the order in which it can be made; nothing when all is there.
std::vector<UpgradeStep> upgradeSteps(database::Connection& connection);

// Throws CommandError (kNoDatabase) unless the database holds the tables of this program: a message
// that says what is missing, or that a newer program has written it. `name` is what people call the
// database.
void requirePlatform(database::Connection& connection, const std::string& name);

// Throws CommandError (kNoDatabase) when a newer program has written the database.
void refuseNewer(database::Connection& connection, const std::string& name);

// The database of a command that works on the platform's tables: opened, and held to them unless
// the login only reads, as for trial runs on another program's data. Throws CommandError
// (kNoDatabase).
database::Database& openPlatform(database::Registry& databases, const std::string& connection);

// Whether any of the platform's tables is there.
bool holdsPlatform(database::Connection& connection);

// How this program names itself in the database.
std::string programName();

}  // namespace tarlo::app
