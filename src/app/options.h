#pragma once
// Options and words that several commands take: a configuration, a database, an id, a user.

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "database/database.h"
#include "host/config.h"
#include "host/sign_in/credentials.h"

namespace tarlo::app {

// --config.
void addConfigOption(CLI::App& command, std::string& file);

// The defaults for "". Throws CommandError (kBadConfig).
host::Config readConfig(const std::string& file);

// --database.
inline constexpr const char* kDefaultDatabase = "sqlite:data/tarlo.db";

void addDatabaseOption(CLI::App& command, std::string& connection);

// The one word that a command is about, and --database.
struct Subject {
  const char* name;
  const char* type;
  const char* description;
};
void addSubject(CLI::App& command, const Subject& subject, std::vector<std::string>& word,
                std::string& connection);

// Tries a connection before the command begins: operations that go on after an error would hide a
// missing database. Throws CommandError (kNoDatabase).
database::Database& openForCommand(database::Registry& databases, const std::string& connection);

// An id. Throws CommandError (kUsage) for a word that is no whole number.
int idFrom(const std::string& word);

// Users of the sign-in, for the commands that let them in.

// The database, checked for the tables of this program. Throws CommandError (kNoDatabase).
database::Database& openWithSignIn(database::Registry& databases, const std::string& connection);

// Throws CommandError (kFailed) when there is no such user.
host::User userByLogin(database::Database& database, const std::string& login);

// The address of a fresh one-time link.
std::string freshLink(database::Database& database, const host::User& user,
                      std::chrono::milliseconds life, const std::string& baseUrl);

}  // namespace tarlo::app
