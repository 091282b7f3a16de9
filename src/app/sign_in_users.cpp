#include "app/sign_in_users.h"

#include <fmt/format.h>

#include "app/database_option.h"
#include "app/exit_code.h"
#include "app/platform_schema.h"

namespace tarlo::app {

database::Database& openWithSignIn(database::Registry& databases, const std::string& connection) {
  database::Database& database = openForCommand(databases, connection);
  requirePlatform(*database.borrow(), connection);
  return database;
}

host::User userByLogin(database::Database& database, const std::string& login) {
  const auto user = host::findUser(database, login);
  if (!user) throw CommandError(kFailed, fmt::format("There is no user '{}'.", login));
  return *user;
}

std::string freshLink(database::Database& database, const host::User& user,
                      std::chrono::milliseconds life, const std::string& baseUrl) {
  const std::string_view base =
      std::string_view(baseUrl).substr(0, baseUrl.find_last_not_of('/') + 1);
  return fmt::format("{}/sign-in?link={}", base, host::makeSignInLink(database, user.id, life));
}

}  // namespace tarlo::app
