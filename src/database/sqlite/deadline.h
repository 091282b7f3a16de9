#pragma once
// The deadline of a SQLite connection: SQLite asks from inside its program and while it waits for a
// lock.

#include <sqlite3.h>

#include <utility>

#include "database/deadline.h"

namespace tarlo::database {

class SqliteDeadline final : public Deadline {
 public:
  // `patience`: how long a write waits for another process.
  SqliteDeadline(std::chrono::milliseconds limit, std::chrono::milliseconds patience)
      : Deadline(limit), patience_(patience) {}

  void install(sqlite3* handle);
  // While it lives, functions that SQLite calls on this thread can ask for this deadline: a
  // function may take longer than thousands of SQLite's own steps.
  class Running {
   public:
    explicit Running(SqliteDeadline& deadline) : before_(std::exchange(running, &deadline)) {}
    ~Running() { running = before_; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

   private:
    SqliteDeadline* const before_;
  };
  // Whether the statement that runs on this thread has to end; false when none does.
  static bool isOverHere() { return running != nullptr && running->isOver(Clock::now()); }

 private:
  static constexpr int kSteps = 4000;  // well below a millisecond

  static thread_local SqliteDeadline* running;

  static int checkProgress(void* self);
  static int waitForLock(void* self, int tries);

  std::chrono::milliseconds patience_;
  Clock::time_point waitEnd_;
};

}  // namespace tarlo::database
