#include "app/progress.h"

#include <fmt/format.h>

#include <string>

#include "app/terminal.h"

namespace tarlo::app {
namespace {

constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr auto kRedraw = std::chrono::milliseconds(100);
constexpr std::size_t kBarWidth = 30;

}  // namespace

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
