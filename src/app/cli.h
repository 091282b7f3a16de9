#pragma once
// The command line as a function, so that tests call it in process.

#include <ostream>
#include <span>
#include <string_view>

namespace tarlo::app {

inline constexpr std::string_view kProgram = "tarloquery";
// "major.minor.patch", which the build alone knows.
std::string_view version();

// `arguments` as main gets them, the program's name first. Results go to `out`, messages to `err`.
// Gives the exit code (exit_code.h) and throws nothing.
int run(std::span<const char* const> arguments, std::ostream& out, std::ostream& err);

}  // namespace tarlo::app
