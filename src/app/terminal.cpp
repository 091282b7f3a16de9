#include "app/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <iostream>

namespace tarlo::app {
namespace {

constexpr int kNoDescriptor = -1;

int descriptorOf(const std::ostream& stream) {
  if (&stream == &std::cout) return STDOUT_FILENO;
  return &stream == &std::cerr ? STDERR_FILENO : kNoDescriptor;
}

}  // namespace

bool isTerminal(const std::ostream& stream) {
  const int descriptor = descriptorOf(stream);
  return descriptor != kNoDescriptor && isatty(descriptor) == 1;
}

std::size_t widthOf(const std::ostream& stream) {
  winsize size{};
  if (!isTerminal(stream)) return kPlainWidth;
  // A terminal that does not know its width says 0.
  if (ioctl(descriptorOf(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kPlainWidth;
  return size.ws_col;
}

}  // namespace tarlo::app
