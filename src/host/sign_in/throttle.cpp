#include "host/sign_in/throttle.h"

namespace tarlo::host {

bool Throttle::take(Keys keys) {
  const std::lock_guard lock(mutex_);
  const auto now = now_();
  for (const std::string_view key : keys) {
    if (isFull(std::string(key), now)) return false;
  }
  for (const std::string_view key : keys) count(std::string(key), now);
  return true;
}

void Throttle::giveBack(Keys keys) {
  const std::lock_guard lock(mutex_);
  for (const std::string_view key : keys) {
    const auto found = entries_.find(std::string(key));
    if (found == entries_.end()) continue;
    if (--found->second.attempts == 0) entries_.erase(found);
  }
}

bool Throttle::isFull(const std::string& key, Clock::time_point now) const {
  const auto found = entries_.find(key);
  return found != entries_.end() && found->second.attempts >= attempts_ &&
         now - found->second.last <= window_;
}

void Throttle::count(const std::string& key, Clock::time_point now) {
  if (entries_.size() >= kMostKeys) makeRoom(now);
  Entry& entry = entries_[key];
  if (now - entry.last > window_) entry.attempts = 0;
  ++entry.attempts;
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
  std::erase_if(entries_, [&](const auto& item) { return item.second.attempts < attempts_; });
  if (entries_.size() >= kMostKeys) entries_.clear();
}

}  // namespace tarlo::host
