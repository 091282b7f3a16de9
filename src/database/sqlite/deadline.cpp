#include "database/sqlite/deadline.h"

#include <algorithm>
#include <thread>

namespace tarlo::database {

thread_local SqliteDeadline* SqliteDeadline::running = nullptr;

void SqliteDeadline::install(sqlite3* handle) {
  sqlite3_progress_handler(handle, kSteps, &SqliteDeadline::checkProgress, this);
  sqlite3_busy_handler(handle, &SqliteDeadline::waitForLock, this);
}

int SqliteDeadline::checkProgress(void* self) {
  return static_cast<SqliteDeadline*>(self)->isOver(Clock::now()) ? 1 : 0;
}

// Pauses grow, as SQLite's own do, so that a short lock costs little and a long one little work.
int SqliteDeadline::waitForLock(void* self, int tries) {
  constexpr std::chrono::milliseconds kLongestPause{50};
  auto& deadline = *static_cast<SqliteDeadline*>(self);
  const auto now = Clock::now();
  if (tries == 0) deadline.waitEnd_ = now + deadline.patience_;
  if (now >= deadline.waitEnd_ || deadline.isOver(now)) return 0;
  std::this_thread::sleep_for(std::min(kLongestPause, std::chrono::milliseconds(1 + tries * 2)));
  return 1;
}

}  // namespace tarlo::database
