#pragma once
// A progress bar on standard error, for work that makes somebody wait. It shows itself after half a
// second and only on a terminal, and leaves no trace.

#include <chrono>
#include <cstddef>
#include <ostream>
#include <string_view>

namespace tarlo::app {

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
