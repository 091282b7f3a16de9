#include "host/upkeep/upkeep.h"

#include <condition_variable>
#include <mutex>

#include "host/site/log_text.h"

namespace tarlo::host {

namespace {

// Runs the work again and again until a stop is asked for, with the pause between.
std::jthread repeating(std::chrono::milliseconds pause, std::shared_ptr<spdlog::logger> log,
                       std::function<void(const std::stop_token&)> work) {
  return std::jthread(
      [pause, log = std::move(log), work = std::move(work)](const std::stop_token& stop) {
        std::mutex mutex;
        std::condition_variable_any ended;
        std::unique_lock lock(mutex);
        while (!ended.wait_for(lock, stop, pause, [] { return false; })) {
          if (stop.stop_requested()) return;
          try {
            work(stop);
          } catch (const std::exception& error) {
            log->error("the server's own work failed: {}", logText(error.what()));
          }
        }
      });
}

}  // namespace

Upkeep::Upkeep(const Config& config, database::Registry& databases, Readiness& readiness,
               std::shared_ptr<spdlog::logger> log)
    : housekeeping_(config, databases, log),
      watching_(repeating(std::chrono::seconds(1), log,
                          [&readiness](const std::stop_token&) { readiness.look(); })) {
  if (config.housekeepingPause.count() == 0) return;
  clearing_ = repeating(config.housekeepingPause, log,
                        [this](const std::stop_token& stop) { housekeeping_.run(stop); });
}

}  // namespace tarlo::host
