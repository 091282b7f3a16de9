#pragma once
// What the connections of a database have lately met of its server: health is told from it, so that
// asking for it waits for nobody. Thread-safe.

#include <atomic>
#include <chrono>
#include <mutex>

#include "database/error.h"
#include "database/health.h"

namespace tarlo::database {

class ServerState {
 public:
  // A failure, of a statement or of connecting. Those of the statement's own are not noted.
  void note(const DatabaseError& error);
  // A statement went through: the server answers; `wrote` when it also took a write.
  void noteAnswer(bool wrote) {
    if (isTroubled_) clear(wrote);
  }
  Health health() const;

 private:
  // A server that did not answer may do so by now; nobody would find out if it were not asked.
  static constexpr std::chrono::seconds kRemembered{3};

  void clear(bool wrote);

  mutable std::mutex mutex_;
  std::atomic<bool> isTroubled_{false};
  Health health_;
  std::chrono::steady_clock::time_point since_;
};

}  // namespace tarlo::database
