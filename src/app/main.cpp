// The program: hands its arguments to the command line.

#include <csignal>
#include <cstddef>
#include <iostream>
#include <span>

#include "app/cli.h"

int main(int argc, char** argv) {
  // A reader that has seen enough (a pager, head) ends the program without a word.
  std::signal(SIGPIPE, SIG_DFL);
  std::ios::sync_with_stdio(false);
  const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
  return tarlo::app::run(arguments, std::cout, std::cerr);
}
