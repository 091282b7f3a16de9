#include "database/deadline.h"

#include <algorithm>

namespace tarlo::database {

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

Deadline::Clock::time_point Deadline::nextLook(Clock::time_point now) const {
  constexpr std::chrono::minutes kLongest{1};
  Clock::time_point next = now + kLongest;
  if (isWanted_ != nullptr && *isWanted_) next = std::min(next, nextQuestion_);
  if (limit_.count() != 0) next = std::min(next, end_);
  return next;
}

}  // namespace tarlo::database
