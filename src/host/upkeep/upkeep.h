#pragma once
// What the server does by itself beside the requests: it looks whether it can work, and clears away
// what has had its time. Two threads, so that a long round of the one does not make the other
// blind.

#include <memory>
#include <thread>

#include "host/upkeep/housekeeping.h"
#include "host/upkeep/readiness.h"

namespace tarlo::host {

class Upkeep {
 public:
  // All outlive it.
  Upkeep(const Config& config, database::Registry& databases, Readiness& readiness,
         std::shared_ptr<spdlog::logger> log);
  // Ends both; a step of the housekeeping that runs comes to its end.
  ~Upkeep() = default;
  Upkeep(const Upkeep&) = delete;
  Upkeep& operator=(const Upkeep&) = delete;

 private:
  Housekeeping housekeeping_;
  std::jthread watching_;
  std::jthread clearing_;
};

}  // namespace tarlo::host
