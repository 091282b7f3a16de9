#pragma once
// Counts attempts by key within a window and says when there were too many. An attempt counts
// before it is made, so that of many at the same time no more pass than of as many in a row; one
// that did not fail is given back. Thread-safe, and bounded: an attacker who makes up names cannot
// make it grow.

#include <chrono>
#include <cstddef>
#include <functional>
#include <initializer_list>
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

  using Keys = std::initializer_list<std::string_view>;
  // Counts an attempt under each key, and begins their windows anew. False, and nothing is counted,
  // when one of them has as many as there may be: it can try again when its window is over.
  bool take(Keys keys);
  // Takes an attempt back that was no failure.
  void giveBack(Keys keys);
  // The key has nothing to answer for any longer.
  void forget(std::string_view key);

 private:
  struct Entry {
    std::size_t attempts = 0;
    Clock::time_point last;
  };
  bool isFull(const std::string& key, Clock::time_point now) const;
  void count(const std::string& key, Clock::time_point now);
  void makeRoom(Clock::time_point now);

  const std::size_t attempts_;
  const std::chrono::milliseconds window_;
  const std::function<Clock::time_point()> now_;
  std::mutex mutex_;
  std::unordered_map<std::string, Entry> entries_;
};

}  // namespace tarlo::host
