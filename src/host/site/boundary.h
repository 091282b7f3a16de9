#pragma once
// The one place where what goes wrong in a request becomes a response. Users get a plain page with
// the request's id; the log gets everything.

#include <spdlog/logger.h>

#include <functional>

#include "host/site/visit.h"

namespace tarlo::host {

// Runs the work and sends the page that it wrote, or the page of a failure. What a flushed page has
// sent already stays, and ends there.
void runWithin(Visit& visit, spdlog::logger& log, const std::function<void()>& work) noexcept;

}  // namespace tarlo::host
