#pragma once
// How many requests are being read, answered or written, and a way to wait until there are none.

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace tarlo::host {

class BusyCount {
 public:
  // Counts as busy as long as it lives.
  class Scope {
   public:
    explicit Scope(BusyCount& count) : count_(count) { count_.change(1); }
    ~Scope() { count_.change(-1); }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    BusyCount& count_;
  };

  // False when the time ran out first.
  bool waitUntilIdle(std::chrono::milliseconds longest) {
    std::unique_lock lock(mutex_);
    return idle_.wait_for(lock, longest, [this] { return count_ == 0; });
  }

 private:
  void change(int by) {
    const std::lock_guard lock(mutex_);
    count_ += by;
    if (count_ == 0) idle_.notify_all();
  }

  std::mutex mutex_;
  std::condition_variable idle_;
  int count_ = 0;
};

}  // namespace tarlo::host
