#include "app/options.h"

#include <fmt/format.h>

#include <charconv>

#include "app/exit_code.h"
#include "app/platform_schema.h"

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

void addDatabaseOption(CLI::App& command, std::string& connection) {
  connection = kDefaultDatabase;
  command
      .add_option("-d,--database", connection,
                  "The database, sqlite:FILE; sqlite-read:FILE writes nothing")
      ->type_name("CONN")
      ->capture_default_str();
}

void addSubject(CLI::App& command, const Subject& subject, std::vector<std::string>& word,
                std::string& connection) {
  command.add_option(subject.name, word, subject.description)
      ->type_name(subject.type)
      ->expected(1)
      ->required();
  addDatabaseOption(command, connection);
}

database::Database& openForCommand(database::Registry& databases, const std::string& connection) {
  try {
    database::Database& database = databases.find(connection);
    database.borrow();
    return database;
  } catch (const RuntimeError& error) {
    throw CommandError(
        kNoDatabase,
        fmt::format("{}: {}\n--database names the database, 'tarloquery init' makes one.",
                    connection, error.description()));
  }
}

int idFrom(const std::string& word) {
  int id = 0;
  const char* end = word.data() + word.size();
  const auto read = std::from_chars(word.data(), end, id);
  if (read.ec == std::errc() && read.ptr == end) return id;
  throw CommandError(kUsage, fmt::format("'{}' is not an id.", word));
}

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
