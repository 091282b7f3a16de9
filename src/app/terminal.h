#pragma once
// What is known about the terminal, if there is one, that a stream writes to.

#include <chrono>
#include <cstddef>
#include <ostream>
#include <string_view>

namespace tarlo::app {

// The width that is laid out for where nobody looks at a terminal.
inline constexpr std::size_t kPlainWidth = 160;

// Whether the stream is the process's own output or error stream, and that is a terminal.
bool isTerminal(const std::ostream& stream);

// Columns on a line: the terminal's where the stream is one, kPlainWidth elsewhere.
std::size_t widthOf(const std::ostream& stream);

// A progress bar on standard error, for work that makes somebody wait. It shows itself after half a
// second and only on a terminal, and leaves no trace.
class Progress {
 public:
  // Draws nothing unless `err` is the process's standard error and that is a terminal.
  Progress(std::ostream& err, std::string_view what, std::size_t total);
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void advance();
  // Takes the bar off the line, so that other text can be written; advance() draws it again.
  void clear();

 private:
  void draw();

  std::ostream& err_;
  std::string_view what_;
  std::size_t total_;
  std::size_t done_ = 0;
  bool enabled_;
  bool drawn_ = false;
  std::chrono::steady_clock::time_point next_;
};

}  // namespace tarlo::app
