// The sub-command "set-password": gives a user a password, read without an echo.

#include <fmt/format.h>
#include <termios.h>
#include <unistd.h>

#include <iostream>
#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "host/sign_in/passwords.h"
#include "variant/text.h"

namespace tarlo::app {
namespace {

struct PasswordOptions {
  Words standIns;
  std::string connection;
};

// No echo on the terminal as long as it lives.
class QuietTerminal {
 public:
  QuietTerminal() {
    isTerminal_ = tcgetattr(STDIN_FILENO, &before_) == 0;
    if (!isTerminal_) return;
    termios quiet = before_;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
  }
  ~QuietTerminal() {
    if (isTerminal_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
  }
  QuietTerminal(const QuietTerminal&) = delete;
  QuietTerminal& operator=(const QuietTerminal&) = delete;
  bool isTerminal() const { return isTerminal_; }

 private:
  bool isTerminal_ = false;
  termios before_{};
};

std::string askedLine(Console console, const QuietTerminal& terminal, std::string_view question) {
  if (terminal.isTerminal()) (console.err << question).flush();
  std::string line;
  std::getline(std::cin, line);
  if (terminal.isTerminal()) console.err << '\n';
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

std::string readPassword(Console console) {
  const QuietTerminal terminal;
  const std::string password = askedLine(console, terminal, "Password: ");
  if (variant::len(password) < host::kLeastPassword || password.size() > host::kMostPassword) {
    throw CommandError(kUsage, fmt::format("A password has at least {} characters and at most {} "
                                           "bytes; nothing was changed.",
                                           host::kLeastPassword, host::kMostPassword));
  }
  if (terminal.isTerminal() && askedLine(console, terminal, "Once more: ") != password)
    throw CommandError(kUsage, "The two are not the same; nothing was changed.");
  return password;
}

int setPassword(Console console, const PasswordOptions& options, const Words& words) {
  database::Registry databases;
  database::Database& database = openWithSignIn(databases, options.connection);
  const host::User user = userByLogin(database, words.front());
  host::storePasswordHash(database, user.id, host::hashPassword(readPassword(console)));
  console.out << fmt::format("{} has a new password.\n", user.login);
  return kDone;
}

}  // namespace

Command addSetPassword(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("set-password", "Give a user a password");
  const auto options = std::make_shared<PasswordOptions>();
  addSubject(*command, {"user", "USER", "The user's sign-in name"}, options->standIns,
             options->connection);
  command->footer(
      "The password is read from the terminal, or from the first line of the input.\n\n" +
      std::string(kExitCodeHelp));
  return {command,
          [console, options](const Words& words) { return setPassword(console, *options, words); }};
}

}  // namespace tarlo::app
