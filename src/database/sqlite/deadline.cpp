#include "database/sqlite/deadline.h"

#include <algorithm>
#include <thread>

namespace tarlo::database {

thread_local Deadline* Deadline::running = nullptr;

void Deadline::install(sqlite3* handle) {
  sqlite3_progress_handler(handle, kSteps, &Deadline::checkProgress, this);
  sqlite3_busy_handler(handle, &Deadline::waitForLock, this);
}

bool Deadline::isOver(Clock::time_point now) {
  if (!isTimed_) {
    isTimed_ = true;
    end_ = now + limit_;
    nextQuestion_ = now + kBetweenQuestions;
  }
  if (isWanted_ != nullptr && *isWanted_ && now >= nextQuestion_) {
    nextQuestion_ = now + kBetweenQuestions;
    if (!(*isWanted_)()) cancelled_ = true;
  }
  return cancelled_ || (limit_.count() != 0 && now >= end_);
}

int Deadline::checkProgress(void* self) {
  return static_cast<Deadline*>(self)->isOver(Clock::now()) ? 1 : 0;
}

// Pauses grow, as SQLite's own do, so that a short lock costs little and a long one little work.
int Deadline::waitForLock(void* self, int tries) {
  constexpr std::chrono::milliseconds kLongestPause{50};
  auto& deadline = *static_cast<Deadline*>(self);
  const auto now = Clock::now();
  if (tries == 0) deadline.waitEnd_ = now + deadline.patience_;
  if (now >= deadline.waitEnd_ || deadline.isOver(now)) return 0;
  std::this_thread::sleep_for(std::min(kLongestPause, std::chrono::milliseconds(1 + tries * 2)));
  return 1;
}

}  // namespace tarlo::database
