#pragma once
// What the server clears away while it runs: rows that nobody asks for any more. It goes in small
// steps, each a write of its own, so that nobody waits long for the database because of it.

#include <spdlog/logger.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

#include "database/database.h"
#include "host/config.h"

namespace tarlo::host {

class Housekeeping {
 public:
  using Clock = std::chrono::system_clock;
  // Rows that one write removes, and the rest between two.
  static constexpr std::size_t kStep = 500;
  static constexpr std::chrono::milliseconds kRest{50};

  // All outlive it. `now` is given for tests.
  Housekeeping(const Config& config, database::Registry& databases,
               std::shared_ptr<spdlog::logger> log,
               std::function<Clock::time_point()> now = Clock::now);

  // One round. What was removed is a line in the log, and so is a round that failed. Ends between
  // two steps when a stop is asked for.
  void run(const std::stop_token& stop);

 private:
  struct Kind;
  void runAll(const std::stop_token& stop);
  void removeAged(const Kind& kind, std::chrono::milliseconds life, const std::stop_token& stop);
  void noteAge(const Kind& kind, std::chrono::milliseconds life);
  void removeWhere(const Kind& kind, const std::string& condition, const std::stop_token& stop);
  std::size_t removeStep(const Kind& kind, const std::string& condition);
  Variant valueOf(const std::string& sql);
  void execute(const std::string& sql);
  std::string timeText(std::chrono::milliseconds before) const;

  const Config& config_;
  database::Registry& databases_;
  const std::shared_ptr<spdlog::logger> log_;
  const std::function<Clock::time_point()> now_;
  const database::StatementContext context_;
  std::map<std::string_view, std::size_t> removed_;  // rows of this round, by what they are called
};

}  // namespace tarlo::host
