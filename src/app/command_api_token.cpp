// The sub-command "api-token": a token of the JSON interface for a user, or the end of all of them.

#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/options.h"

namespace tarlo::app {
namespace {

struct TokenOptions {
  Words standIns;
  std::string connection;
  int days = 365;
  bool revokes = false;
};

int makeToken(Console console, const TokenOptions& options, const Words& words) {
  database::Registry databases;
  database::Database& database = openWithSignIn(databases, options.connection);
  const host::User user = userByLogin(database, words.front());
  if (options.revokes) {
    host::revokeApiTokens(database, user.id);
    console.err << "The tokens of " << words.front() << " have ended.\n";
  } else {
    const std::chrono::hours life(24 * options.days);
    console.out << host::makeApiToken(database, user.id, life) << '\n';
  }
  return kDone;
}

}  // namespace

Command addApiToken(CLI::App& program, Console console) {
  CLI::App* command =
      program.add_subcommand("api-token", "Make a token with which a program reads as a user");
  const auto options = std::make_shared<TokenOptions>();
  addSubject(*command, {"user", "USER", "The user's sign-in name"}, options->standIns,
             options->connection);
  command->add_option("--days", options->days, "How long it works")
      ->check(CLI::Range(1, 3650))
      ->capture_default_str();
  command->add_flag("--revoke", options->revokes, "End all tokens of the user instead");
  command->footer(
      "The token is printed once and stored as a hash. Send it as\n"
      "Authorization: Bearer TOKEN to the addresses below /api/.\n\n" +
      std::string(kExitCodeHelp));
  return {command,
          [console, options](const Words& words) { return makeToken(console, *options, words); }};
}

}  // namespace tarlo::app
