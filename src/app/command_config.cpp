// The sub-command "config": the configuration as the server would have it, every key explained.

#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/options.h"

namespace tarlo::app {

Command addConfig(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("config", "Print the server's configuration");
  const auto file = std::make_shared<std::string>();
  addConfigOption(*command, *file);
  command->footer("The output is a configuration file itself, with every key and its meaning.\n\n" +
                  std::string(kExitCodeHelp));
  return {command, [console, file](const Words&) {
            console.out << host::printConfig(readConfig(*file));
            return kDone;
          }};
}

}  // namespace tarlo::app
