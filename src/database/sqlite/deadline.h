#pragma once
// When a running call ends before its time: the command time-out, and a reader that nobody waits
// for any more. SQLite asks from inside its program and while it waits for a lock.

#include <chrono>
#include <functional>
#include <utility>

#include <sqlite3.h>

namespace tarlo::database {

class Deadline {
 public:
  using Clock = std::chrono::steady_clock;

  // `patience`: how long a write waits for another process.
  Deadline(std::chrono::milliseconds limit, std::chrono::milliseconds patience)
      : limit_(limit), patience_(patience) {}
  Deadline(const Deadline&) = delete;
  Deadline& operator=(const Deadline&) = delete;

  void install(sqlite3* handle);
  void setLimit(std::chrono::milliseconds limit) { limit_ = limit; }
  // Asked a few times a second from here on; nothing asks nobody. What it points to lives until
  // the next call of this.
  void watch(const std::function<bool()>* isWanted) { isWanted_ = isWanted; }
  // A call begins. The clock is first read when the call has taken kSteps steps, so that short
  // calls pay nothing.
  void restart() {
    isTimed_ = false;
    cancelled_ = false;
  }
  // While it lives, functions that SQLite calls on this thread can ask for this deadline: a
  // function may take longer than thousands of SQLite's own steps.
  class Running {
   public:
    explicit Running(Deadline& deadline) : before_(std::exchange(running, &deadline)) {}
    ~Running() { running = before_; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

   private:
    Deadline* const before_;
  };
  // Whether the statement that runs on this thread has to end; false when none does.
  static bool isOverHere() { return running != nullptr && running->isOver(Clock::now()); }

  // Whether the call ended because nobody wanted it.
  bool wasCancelled() const { return cancelled_; }

 private:
  static constexpr int kSteps = 4000;  // well below a millisecond
  static constexpr std::chrono::milliseconds kBetweenQuestions{200};

  static thread_local Deadline* running;

  static int checkProgress(void* self);
  static int waitForLock(void* self, int tries);
  bool isOver(Clock::time_point now);

  std::chrono::milliseconds limit_;
  std::chrono::milliseconds patience_;
  const std::function<bool()>* isWanted_ = nullptr;
  Clock::time_point end_;
  Clock::time_point nextQuestion_;
  Clock::time_point waitEnd_;
  bool isTimed_ = false;  // `end_` is this call's
  bool cancelled_ = false;
};

}  // namespace tarlo::database
