#pragma once
// The one place where what goes wrong in a request becomes a response. Users get a plain notice
// with the request's id, behind what the page has written; the log gets everything.

#include <spdlog/logger.h>

#include <functional>

#include "host/site/visit.h"

namespace tarlo::host {

// Runs the work and sends the page that it wrote. When it raises, what is written of a page stays,
// and the notice of the failure stands behind it; a flushed page ends where it is.
void runWithin(Visit& visit, spdlog::logger& log, const std::function<void()>& work) noexcept;

}  // namespace tarlo::host
