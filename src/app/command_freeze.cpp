// The sub-command "freeze": a version of a scheme that stays as it is.

#include <fmt/format.h>

#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/platform_schema.h"
#include "frame/local_page.h"
#include "metadata/stored_schemes.h"

namespace tarlo::app {
namespace {

struct FreezeOptions {
  Words standIns;
  std::string connection;
};

int freeze(Console console, const FreezeOptions& options, const Words& words) {
  database::Registry databases;
  openPlatform(databases, options.connection);
  frame::LocalPage local(databases, options.connection);
  const int id = idFrom(words.front());
  const auto version = metadata::freeze(local.page(), std::to_string(id));
  if (!version) throw CommandError(kFailed, fmt::format("There is no scheme {}.", id));
  console.out << *version << '\n';
  return kDone;
}

}  // namespace

Command addFreeze(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("freeze", "Keep a version of a scheme as it is now");
  const auto options = std::make_shared<FreezeOptions>();
  addSubject(*command, {"id", "ID", "Id of the scheme"}, options->standIns, options->connection);
  command->footer(
      "Calls CopyQuery and prints the version's id: a scheme that has not changed since its last\n"
      "version keeps that one.\n\n" +
      std::string(kExitCodeHelp));
  return {command,
          [console, options](const Words& words) { return freeze(console, *options, words); }};
}

}  // namespace tarlo::app
