#pragma once
// Counts failures by key within a window and says when there were too many. Thread-safe, and
// bounded: an attacker who makes up names cannot make it grow.

#include <chrono>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tarlo::host {

class Throttle {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::size_t kMostKeys = 20'000;

  // `now` is given for tests.
  Throttle(std::size_t attempts, std::chrono::milliseconds window,
           std::function<Clock::time_point()> now = Clock::now)
      : attempts_(attempts), window_(window), now_(std::move(now)) {}

  bool isBlocked(std::string_view key);
  // The window begins anew with each failure, so who goes on trying stays out.
  void noteFailure(std::string_view key);
  void forget(std::string_view key);

 private:
  struct Entry {
    std::size_t failures = 0;
    Clock::time_point last;
  };
  void makeRoom(Clock::time_point now);

  const std::size_t attempts_;
  const std::chrono::milliseconds window_;
  const std::function<Clock::time_point()> now_;
  std::mutex mutex_;
  std::unordered_map<std::string, Entry> entries_;
};

}  // namespace tarlo::host
