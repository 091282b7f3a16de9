#include "host/context/sessions.h"

#include <sys/random.h>

#include <array>
#include <system_error>

namespace tarlo::host {

std::string randomToken() {
  std::array<unsigned char, 32> bytes;
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw std::system_error(errno, std::generic_category(), "no random bytes");
  }
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string token;
  token.reserve(bytes.size() * 2);
  for (const unsigned char byte : bytes) {
    token += kDigits[byte >> 4];
    token += kDigits[byte & 15];
  }
  return token;
}

Variant SessionData::get(std::string_view key) const {
  const std::lock_guard lock(mutex_);
  const auto found = values_.find(key);
  return found == values_.end() ? Variant() : found->second;
}

void SessionData::put(std::string_view key, const Variant& value) {
  const std::lock_guard lock(mutex_);
  values_.insert_or_assign(std::string(key), value);
}

std::string SessionData::stamp() const {
  const std::lock_guard lock(mutex_);
  return stamp_;
}

void SessionData::setStamp(std::string stamp) {
  const std::lock_guard lock(mutex_);
  stamp_ = std::move(stamp);
  checked_ = Clock::now();
}

bool SessionData::takeCheck(Clock::time_point now, std::chrono::milliseconds every) {
  const std::lock_guard lock(mutex_);
  if (now - checked_ < every) return false;
  checked_ = now;
  return true;
}

std::shared_ptr<SessionData> Sessions::find(std::string_view id) {
  const std::lock_guard lock(mutex_);
  dropExpired();
  const auto found = byId_.find(std::string(id));
  if (found == byId_.end()) return nullptr;
  found->second->lastUse = now_();
  order_.splice(order_.end(), order_, found->second);
  return found->second->data;
}

std::shared_ptr<SessionData> Sessions::create() {
  const std::lock_guard lock(mutex_);
  dropExpired();
  if (order_.size() >= most_) {
    byId_.erase(order_.front().data->id());
    order_.pop_front();
  }
  // Half a token is enough for a name that nobody need guess.
  constexpr std::size_t kPublicLength = 32;
  return add(std::make_shared<SessionData>(randomToken(), randomToken().substr(0, kPublicLength)));
}

std::shared_ptr<SessionData> Sessions::add(std::shared_ptr<SessionData> data) {
  order_.push_back({data, now_()});
  byId_.emplace(data->id(), std::prev(order_.end()));
  return data;
}

void Sessions::end(std::string_view id) {
  const std::lock_guard lock(mutex_);
  const auto found = byId_.find(std::string(id));
  if (found == byId_.end()) return;
  order_.erase(found->second);
  byId_.erase(found);
}

std::size_t Sessions::count() const {
  const std::lock_guard lock(mutex_);
  return order_.size();
}

void Sessions::dropExpired() {
  const auto oldest = now_() - idle_;
  while (!order_.empty() && order_.front().lastUse < oldest) {
    byId_.erase(order_.front().data->id());
    order_.pop_front();
  }
}

}  // namespace tarlo::host
