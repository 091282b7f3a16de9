#pragma once
// Parts a sub-command's arguments into options and words. The words stay out of the command-line
// library, which would take -1 for an option and a value in square brackets for a list.

#include <span>
#include <string>
#include <vector>

#include "app/command.h"

namespace tarlo::app {

struct SplitArguments {
  // For the library: the options with their values, then one stand-in for each word so that it can
  // count them.
  std::vector<std::string> forParser;
  Words words;
};

// A word is everything behind "--", and before it whatever is neither an option of the command, nor
// the value of one, nor looks like a long option (which is then refused as unknown).
SplitArguments splitArguments(const CLI::App& command, std::span<const char* const> arguments);

}  // namespace tarlo::app
