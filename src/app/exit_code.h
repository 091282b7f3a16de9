#pragma once
// What the program's exit code says, and the failure that carries one to the top.

#include <stdexcept>
#include <string>
#include <string_view>

namespace tarlo::app {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kUsage = 2;
inline constexpr int kNoDatabase = 3;
inline constexpr int kDifferent = 4;
inline constexpr int kAlreadyThere = 5;
inline constexpr int kBadConfig = 6;
inline constexpr int kCannotListen = 7;

inline constexpr std::string_view kExitCodeHelp =
    "Exit codes:\n"
    "  0  all went well\n"
    "  1  an operation, a statement or a scheme failed\n"
    "  2  the command line is wrong\n"
    "  3  the database cannot be opened or made\n"
    "  4  compile --compare found a difference or a statement that no longer runs\n"
    "  5  init found the platform's tables in the database already\n"
    "  6  the configuration is wrong\n"
    "  7  serve cannot have its address\n";

// Ends a command with a message for people.
class CommandError : public std::runtime_error {
 public:
  CommandError(int exitCode, const std::string& message)
      : std::runtime_error(message), exitCode_(exitCode) {}
  int exitCode() const { return exitCode_; }

 private:
  int exitCode_;
};

}  // namespace tarlo::app
