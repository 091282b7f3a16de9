#include "app/terminal.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <iostream>
#include <string>

namespace tarlo::app {
namespace {

constexpr int kNoDescriptor = -1;

int descriptorOf(const std::ostream& stream) {
  if (&stream == &std::cout) return STDOUT_FILENO;
  return &stream == &std::cerr ? STDERR_FILENO : kNoDescriptor;
}

constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr auto kRedraw = std::chrono::milliseconds(100);
constexpr std::size_t kBarWidth = 30;

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

Progress::Progress(std::ostream& err, std::string_view what, std::size_t total)
    : err_(err),
      what_(what),
      total_(total),
      enabled_(isTerminal(err)),
      next_(std::chrono::steady_clock::now() + kPatience) {}

void Progress::advance() {
  ++done_;
  const auto now = std::chrono::steady_clock::now();
  if (!enabled_ || now < next_) return;
  next_ = now + kRedraw;
  draw();
}

void Progress::draw() {
  const std::size_t filled = total_ == 0 ? kBarWidth : kBarWidth * done_ / total_;
  std::string bar(kBarWidth, '.');
  bar.replace(0, filled, filled, '#');
  err_ << fmt::format("\r{} [{}] {}/{}", what_, bar, done_, total_) << std::flush;
  drawn_ = true;
}

void Progress::clear() {
  if (!drawn_) return;
  err_ << "\r\x1b[K" << std::flush;
  drawn_ = false;
}

}  // namespace tarlo::app
