#pragma once
// Ids on the command line.

#include <string>

namespace tarlo::app {

// Throws CommandError (kUsage) for a word that is no whole number.
int idFrom(const std::string& word);

}  // namespace tarlo::app
