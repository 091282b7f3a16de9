#pragma once
// What a sub-command is: options that the command-line library parses, and a function that runs
// with them. Each has a file of its own, command_<name>.cpp.

#include <CLI/CLI.hpp>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace tarlo::app {

struct Console {
  std::ostream& out;
  std::ostream& err;
};

// Words that are no options, exactly as given.
using Words = std::vector<std::string>;

struct Command {
  CLI::App* options;
  // Gives the exit code; throws CommandError, RuntimeError or ArgumentError.
  std::function<int(const Words& words)> run;
};

Command addInit(CLI::App& program, Console console);
Command addCall(CLI::App& program, Console console);
Command addSql(CLI::App& program, Console console);
Command addCompile(CLI::App& program, Console console);
Command addOperations(CLI::App& program, Console console);
Command addServe(CLI::App& program, Console console);
Command addConfig(CLI::App& program, Console console);
Command addSignInLink(CLI::App& program, Console console);
Command addSetPassword(CLI::App& program, Console console);
Command addApiToken(CLI::App& program, Console console);
Command addControl(CLI::App& program, Console console);
Command addPropagate(CLI::App& program, Console console);
Command addFreeze(CLI::App& program, Console console);
Command addRegister(CLI::App& program, Console console);
Command addUnregister(CLI::App& program, Console console);
Command addUpgrade(CLI::App& program, Console console);

}  // namespace tarlo::app
