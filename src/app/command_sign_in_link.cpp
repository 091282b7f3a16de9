// The sub-command "sign-in-link": an address that signs a user in once.

#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/options.h"

namespace tarlo::app {
namespace {

struct LinkOptions {
  Words standIns;
  std::string connection, config;
  std::string baseUrl = "http://127.0.0.1:8080";
};

int makeLink(Console console, const LinkOptions& options, const Words& words) {
  const host::Config config = readConfig(options.config);
  database::Registry databases;
  database::Database& database = openWithSignIn(databases, options.connection);
  const host::User user = userByLogin(database, words.front());
  console.out << freshLink(database, user, config.linkLife, options.baseUrl) << '\n';
  return kDone;
}

}  // namespace

Command addSignInLink(CLI::App& program, Console console) {
  CLI::App* command =
      program.add_subcommand("sign-in-link", "Make a link that signs a user in once");
  const auto options = std::make_shared<LinkOptions>();
  addSubject(*command, {"user", "USER", "The user's sign-in name"}, options->standIns,
             options->connection);
  addConfigOption(*command, options->config);
  command->add_option("--base-url", options->baseUrl, "Where users reach the server")
      ->type_name("URL")
      ->capture_default_str();
  command->footer("The link works once, for the time that sign_in.link_seconds says.\n\n" +
                  std::string(kExitCodeHelp));
  return {command,
          [console, options](const Words& words) { return makeLink(console, *options, words); }};
}

}  // namespace tarlo::app
