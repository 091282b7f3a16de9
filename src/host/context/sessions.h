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

// The values of one session.
class SessionData {
 public:
  using Clock = std::chrono::steady_clock;
  SessionData(std::string id, std::string publicId)
      : id_(std::move(id)), publicId_(std::move(publicId)) {}
  Variant get(std::string_view key) const;
  void put(std::string_view key, const Variant& value);
  // What the user was like at the sign-in; "" as long as nobody has signed in.
  std::string stamp() const;
  void setStamp(std::string stamp);
  // Whether it is time to look at the user again, `every` so long. Of several callers one is told
  // so.
  bool takeCheck(Clock::time_point now, std::chrono::milliseconds every);
  // What the cookie holds: whoever knows it has the session.
  const std::string& id() const { return id_; }
  // What pages see and write into tables: names the session and opens nothing. 32 characters.
  const std::string& publicId() const { return publicId_; }

 private:
  mutable std::mutex mutex_;
  const std::string id_;
  const std::string publicId_;
  frame::ValueMap values_;
  std::string stamp_;
  Clock::time_point checked_;
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

// Session of a page over a kept one, which is made when the page puts its first value: a visitor
// who only reads needs none.
class HttpSession : public frame::Session {
 public:
  using Make = std::function<std::shared_ptr<SessionData>()>;
  // `data` may be nothing.
  HttpSession(std::shared_ptr<SessionData> data, Make make)
      : data_(std::move(data)), make_(std::move(make)) {}

  Variant get(std::string_view key) const override {
    return data_ == nullptr ? Variant() : data_->get(key);
  }
  void put(std::string_view key, const Variant& value) override {
    if (data_ == nullptr) data_ = make_();
    data_->put(key, value);
  }
  // The public one; "" as long as there is no session.
  std::string id() const override { return data_ == nullptr ? "" : data_->publicId(); }
  // The cookie's; "" as long as there is no session.
  std::string secretId() const { return data_ == nullptr ? "" : data_->id(); }
  // What is kept of it; nothing as long as there is no session.
  const std::shared_ptr<SessionData>& data() const { return data_; }
  // Goes on with another session, or with none.
  void become(std::shared_ptr<SessionData> data) { data_ = std::move(data); }

 private:
  std::shared_ptr<SessionData> data_;
  Make make_;
};

}  // namespace tarlo::host
