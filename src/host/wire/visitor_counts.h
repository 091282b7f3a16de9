#pragma once
// How many operations each session and each user has, waiting ones included, so that one of them
// does not take every place.

#include <cstddef>
#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>

#include "host/wire/message.h"

namespace tarlo::host {

class VisitorCounts {
 public:
  VisitorCounts(std::size_t perSession, std::size_t perUser)
      : perSession_(perSession), perUser_(perUser) {}

  // A counted operation; taken back when it goes. False when it was one too many: it is not counted
  // then.
  class Place {
   public:
    Place(VisitorCounts& counts, Visitor visitor)
        : counts_(counts), visitor_(std::move(visitor)), taken_(counts_.add(visitor_)) {}
    ~Place() {
      if (taken_) counts_.remove(visitor_);
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    explicit operator bool() const { return taken_; }
    const Visitor& visitor() const { return visitor_; }

   private:
    VisitorCounts& counts_;
    const Visitor visitor_;
    const bool taken_;
  };

 private:
  using Counts = std::unordered_map<std::string, std::size_t>;

  bool add(const Visitor& visitor) {
    const std::lock_guard lock(mutex_);
    if (!take(sessions_, visitor.session, perSession_)) return false;
    if (take(users_, visitor.user, perUser_)) return true;
    giveBack(sessions_, visitor.session);
    return false;
  }
  void remove(const Visitor& visitor) {
    const std::lock_guard lock(mutex_);
    giveBack(sessions_, visitor.session);
    giveBack(users_, visitor.user);
  }
  static bool take(Counts& counts, const std::string& name, std::size_t most) {
    if (name.empty()) return true;
    std::size_t& count = counts[name];
    if (count >= most) return false;
    ++count;
    return true;
  }
  static void giveBack(Counts& counts, const std::string& name) {
    const auto found = counts.find(name);
    if (found != counts.end() && --found->second == 0) counts.erase(found);
  }

  const std::size_t perSession_, perUser_;
  std::mutex mutex_;
  Counts sessions_, users_;
};

}  // namespace tarlo::host
