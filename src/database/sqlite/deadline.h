#pragma once
// The command time-out: stops a statement from inside SQLite's program when the call has run too
// long.

#include <chrono>

#include <sqlite3.h>

namespace tarlo::database {

class Deadline {
 public:
  explicit Deadline(std::chrono::milliseconds limit) : limit_(limit) {}
  Deadline(const Deadline&) = delete;
  Deadline& operator=(const Deadline&) = delete;

  void install(sqlite3* handle) {
    sqlite3_progress_handler(handle, kSteps, &Deadline::check, this);
  }
  void setLimit(std::chrono::milliseconds limit) { limit_ = limit; }
  // A call begins. The clock is first read when the call has taken kSteps steps, so that short
  // calls pay nothing.
  void restart() { running_ = false; }

 private:
  static constexpr int kSteps = 4000;  // well below a millisecond

  static int check(void* self) {
    auto& deadline = *static_cast<Deadline*>(self);
    if (deadline.limit_.count() == 0) return 0;
    const auto now = std::chrono::steady_clock::now();
    if (!deadline.running_) {
      deadline.running_ = true;
      deadline.end_ = now + deadline.limit_;
    }
    return now >= deadline.end_ ? 1 : 0;
  }

  std::chrono::milliseconds limit_;
  std::chrono::steady_clock::time_point end_;
  bool running_ = false;
};

}  // namespace tarlo::database
