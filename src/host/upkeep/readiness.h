#pragma once
// Whether the server can do its work, which is its database's question. A watcher looks about once
// a second; whoever asks gets what was found last, so that asking costs nothing however bad it
// stands.

#include <spdlog/logger.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "database/database.h"

namespace tarlo::host {

class Readiness {
 public:
  using Clock = std::chrono::steady_clock;
  // How long somebody else may keep the database from being written to.
  static constexpr std::chrono::seconds kPatience{5};

  // All outlive it. `reserve`: bytes of the disk that must be free. `now` is given for tests.
  Readiness(std::string connection, database::Registry& databases, std::uint64_t reserve,
            std::shared_ptr<spdlog::logger> log,
            std::function<Clock::time_point()> now = Clock::now);

  // Looks, and remembers. A change is a line in the log. One caller at a time.
  void look();

  // "" when ready, else a short word for what is wrong. Before the first look it is "starting".
  std::string_view reason() const;

 private:
  database::Health found();
  database::Health asked();
  database::Health lockedBy(database::Connection& connection);
  void remember(const database::Health& health);

  const std::string connection_;
  database::Registry& databases_;
  const std::uint64_t reserve_;
  const std::shared_ptr<spdlog::logger> log_;
  const std::function<Clock::time_point()> now_;
  // Of its own, so that a busy pool is no sign of trouble, and so that one connection is always
  // there: the last one takes the write-ahead log with it.
  std::unique_ptr<database::Database> own_;
  std::optional<Clock::time_point> lockedSince_;
  mutable std::mutex mutex_;
  std::optional<database::Trouble> last_;
};

// The word for the trouble: "" for none.
std::string_view wordOf(database::Trouble trouble);

}  // namespace tarlo::host
