#pragma once
// Sessions in memory. Thread-safe: requests of one session may run at the same time.

#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

#include "frame/local_page.h"

namespace tarlo::host {

// 32 bytes of the system's random source as 64 hexadecimal digits.
std::string randomToken();

// The values of one session. Its id changes at a sign-in while the values stay.
class SessionData {
 public:
  explicit SessionData(std::string id) : id_(std::move(id)) {}
  Variant get(std::string_view key) const;
  void put(std::string_view key, const Variant& value);
  std::string id() const;

 private:
  friend class Sessions;
  mutable std::mutex mutex_;
  std::string id_;
  frame::ValueMap values_;
};

class Sessions {
 public:
  using Clock = std::chrono::steady_clock;
  // `now` is given for tests.
  Sessions(std::chrono::milliseconds idle, std::size_t most,
           std::function<Clock::time_point()> now = Clock::now)
      : idle_(idle), most_(most), now_(std::move(now)) {}

  // The session of that id, its idle time begun anew; nothing when it is unknown or has ended.
  std::shared_ptr<SessionData> find(std::string_view id);
  // A new one. Where there are too many, the one that was idle longest ends.
  std::shared_ptr<SessionData> create();
  // Gives the session another id, so that an id known before a sign-in is worth nothing after it.
  void rotate(const std::shared_ptr<SessionData>& session);
  void end(std::string_view id);
  std::size_t count() const;

 private:
  struct Entry {
    std::shared_ptr<SessionData> data;
    Clock::time_point lastUse;
  };
  using List = std::list<Entry>;  // the longest idle first

  void dropExpired();
  std::shared_ptr<SessionData> add(std::shared_ptr<SessionData> data);

  const std::chrono::milliseconds idle_;
  const std::size_t most_;
  const std::function<Clock::time_point()> now_;
  mutable std::mutex mutex_;
  List order_;
  std::unordered_map<std::string, List::iterator> byId_;
};

// Session of a page over a kept one.
class HttpSession : public frame::Session {
 public:
  explicit HttpSession(std::shared_ptr<SessionData> data) : data_(std::move(data)) {}
  Variant get(std::string_view key) const override { return data_->get(key); }
  void put(std::string_view key, const Variant& value) override { data_->put(key, value); }
  std::string id() const override { return data_->id(); }

 private:
  std::shared_ptr<SessionData> data_;
};

}  // namespace tarlo::host
