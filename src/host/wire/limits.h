#pragma once
// Bounds on what comes from outside and on what it may cost. Every one is a key of the
// configuration.

#include <chrono>
#include <cstddef>

namespace tarlo::host {

struct WireLimits {
  std::size_t headerBytes = 64 * 1024;            // request line and headers: beyond it 431
  std::size_t bodyBytes = 16 * 1024 * 1024;       // beyond it 413
  std::size_t responseBytes = 256 * 1024 * 1024;  // of a page that is kept until it is complete
  std::size_t connections = 4000;                 // a further one is answered 503 and closed
  std::size_t threads = 16;
  std::size_t running =
      12;  // operations at a time; fewer than `threads`, so that health checks find one
  std::size_t queued = 256;  // requests that wait for their turn: a further one is answered 503
  std::chrono::milliseconds queueTime{10'000};  // longest wait for a turn
  std::chrono::milliseconds idleTime{60'000};   // between requests of a connection
  std::chrono::milliseconds headerTime{
      10'000};  // from the first byte of a request to the end of its headers
  std::chrono::milliseconds bodyTime{60'000};   // for the body, all of it
  std::chrono::milliseconds writeTime{60'000};  // for one write of the answer
  std::chrono::milliseconds drainTime{
      15'000};  // at a stop: how long running requests may still take
};

}  // namespace tarlo::host
