#pragma once
// When a running call ends before its time: the command time-out, and a reader that nobody waits
// for any more. An engine asks while it works or waits.

#include <chrono>
#include <functional>

namespace tarlo::database {

class Deadline {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kBetweenQuestions{200};

  explicit Deadline(std::chrono::milliseconds limit) : limit_(limit) {}
  Deadline(const Deadline&) = delete;
  Deadline& operator=(const Deadline&) = delete;

  void setLimit(std::chrono::milliseconds limit) { limit_ = limit; }
  // Asked a few times a second from here on; nothing asks nobody. What it points to lives until
  // the next call of this.
  void watch(const std::function<bool()>* isWanted) { isWanted_ = isWanted; }
  // A call begins. The clock is first read when somebody asks, so that short calls pay nothing.
  void restart() {
    isTimed_ = false;
    cancelled_ = false;
  }
  bool isOver(Clock::time_point now);
  // Whether the call ended because nobody wanted it.
  bool wasCancelled() const { return cancelled_; }
  // Until when nothing new is to be asked, given that isOver(now) was false.
  Clock::time_point nextLook(Clock::time_point now) const;

 private:
  std::chrono::milliseconds limit_;
  const std::function<bool()>* isWanted_ = nullptr;
  Clock::time_point end_;
  Clock::time_point nextQuestion_;
  bool isTimed_ = false;  // `end_` is this call's
  bool cancelled_ = false;
};

}  // namespace tarlo::database
