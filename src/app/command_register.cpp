// The sub-commands "register" and "unregister": a library of components writes itself into the
// registry file, or takes itself out.

#include <tarloquery/component.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "bridge/component_library.h"

namespace tarlo::app {
namespace {

struct RegisterOptions {
  Words standIns;
  std::string registry = TARLO_DEFAULT_REGISTRY;
};

int registerLibrary(Console console, const RegisterOptions& options, const Words& words,
                    bool enters) {
  const std::string registry = std::filesystem::absolute(options.registry).string();
  // The entry points take no argument, so the library reads the file's name here.
  setenv("TARLO_REGISTRY", registry.c_str(), 1);
  try {
    const bridge::ComponentLibrary library(std::filesystem::absolute(words.front()).string());
    const bool isDone = enters ? library.registerServer() : library.unregisterServer();
    if (!isDone) throw CommandError(kFailed, registry + ": cannot be written");
  } catch (const bridge::LibraryError& error) {
    throw CommandError(kFailed, error.what());
  }
  console.err << (enters ? "Registered in " : "Taken out of ") << registry << ".\n";
  return kDone;
}

Command addCommand(CLI::App& program, Console console, bool enters) {
  CLI::App* command =
      enters ? program.add_subcommand("register", "Enter a library's classes into the registry")
             : program.add_subcommand("unregister", "Take a library's classes out of the registry");
  const auto options = std::make_shared<RegisterOptions>();
  command->add_option("library", options->standIns, "The library's file")
      ->type_name("LIBRARY")
      ->expected(1)
      ->required();
  command->add_option("--registry", options->registry, "The registry file")
      ->type_name("FILE")
      ->capture_default_str();
  command->footer(
      "`serve` reads the file that its configuration names as components.registry.\n\n" +
      std::string(kExitCodeHelp));
  return {command, [console, options, enters](const Words& words) {
            return registerLibrary(console, *options, words, enters);
          }};
}

}  // namespace

Command addRegister(CLI::App& program, Console console) {
  return addCommand(program, console, true);
}

Command addUnregister(CLI::App& program, Console console) {
  return addCommand(program, console, false);
}

}  // namespace tarlo::app
