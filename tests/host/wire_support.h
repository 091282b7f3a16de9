#pragma once
// What tests of the wire server share: a door that holds handlers, and the lines that it reported.

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <string>

#include "host/wire/server.h"
#include "support/text.h"
#include "wire_client.h"

namespace tarlo::host::testing {

using tarlo::testing::holds;

// Holds handlers until it is opened.
class Door {
 public:
  void open() {
    const std::lock_guard lock(mutex_);
    open_ = true;
    changed_.notify_all();
  }
  void pass() {
    std::unique_lock lock(mutex_);
    ++waiting_;
    changed_.notify_all();
    changed_.wait(lock, [this] { return open_; });
  }
  bool awaitWaiting(int count) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, std::chrono::seconds(5), [&] { return waiting_ >= count; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool open_ = false;
  int waiting_ = 0;
};

// Lines from any thread.
class Lines {
 public:
  void add(std::string_view line) {
    const std::lock_guard lock(mutex_);
    text_.append(line).append("\n");
    changed_.notify_all();
  }
  // True when the words stand in a line within the time.
  bool await(std::string_view words, std::chrono::milliseconds longest = std::chrono::seconds(5)) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, longest, [&] { return text_.find(words) != std::string::npos; });
  }
  std::string text() {
    const std::lock_guard lock(mutex_);
    return text_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::string text_;
};

}  // namespace tarlo::host::testing
