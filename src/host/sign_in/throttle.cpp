#include "host/sign_in/throttle.h"

namespace tarlo::host {

bool Throttle::isBlocked(std::string_view key) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(std::string(key));
  if (found == entries_.end()) return false;
  if (now_() - found->second.last > window_) {
    entries_.erase(found);
    return false;
  }
  return found->second.failures >= attempts_;
}

void Throttle::noteFailure(std::string_view key) {
  const std::lock_guard lock(mutex_);
  const auto now = now_();
  if (entries_.size() >= kMostKeys) makeRoom(now);
  Entry& entry = entries_[std::string(key)];
  if (now - entry.last > window_) entry.failures = 0;
  ++entry.failures;
  entry.last = now;
}

void Throttle::forget(std::string_view key) {
  const std::lock_guard lock(mutex_);
  entries_.erase(std::string(key));
}

// Keys whose window is over go first; where all are fresh, those that are not blocked.
void Throttle::makeRoom(Clock::time_point now) {
  std::erase_if(entries_, [&](const auto& item) { return now - item.second.last > window_; });
  if (entries_.size() < kMostKeys) return;
  std::erase_if(entries_, [&](const auto& item) { return item.second.failures < attempts_; });
  if (entries_.size() >= kMostKeys) entries_.clear();
}

}  // namespace tarlo::host
