#pragma once
// Users of the sign-in, for the commands that let them in.

#include <string>

#include "database/database.h"
#include "host/sign_in/credentials.h"

namespace tarlo::app {

// The database, checked for the tables of this program. Throws CommandError (kNoDatabase).
database::Database& openWithSignIn(database::Registry& databases, const std::string& connection);

// Throws CommandError (kFailed) when there is no such user.
host::User userByLogin(database::Database& database, const std::string& login);

// The address of a fresh one-time link.
std::string freshLink(database::Database& database, const host::User& user,
                      std::chrono::milliseconds life, const std::string& baseUrl);

}  // namespace tarlo::app
