#pragma once
// Bounds on what comes from outside and on what it may cost. Every one but `paceTime` is a key of
// the configuration.

#include <chrono>
#include <cstddef>

namespace tarlo::host {

struct WireLimits {
  // Request line, headers, chunk extensions and trailers together: beyond it 431.
  std::size_t headerBytes = 64 * 1024;
  std::size_t bodyBytes = 16 * 1024 * 1024;       // beyond it 413
  std::size_t responseBytes = 256 * 1024 * 1024;  // of a page that is kept until it is complete
  std::size_t connections = 4000;                 // a further one is answered 503 and closed
  std::size_t threads = 16;
  // Operations and sign-ins at a time; together fewer than `threads`, so that there are always some
  // for reading, for files and for the health checks.
  std::size_t running = 12;
  std::size_t signIns = 2;
  // Of them and of those that wait, how many may belong to one session and to one user: a further
  // one is answered 429.
  std::size_t operationsPerSession = 8;
  std::size_t operationsPerUser = 10;
  std::size_t queued = 256;  // requests that wait for their turn: a further one is answered 503
  std::chrono::milliseconds queueTime{10'000};  // longest wait for a turn
  std::chrono::milliseconds idleTime{60'000};   // between requests of a connection
  std::chrono::milliseconds headerTime{
      10'000};  // from the first byte of a request to the end of its headers
  std::chrono::milliseconds bodyTime{60'000};   // for the body, all of it
  std::chrono::milliseconds writeTime{60'000};  // for one write of the answer
  // A client that takes fewer bytes of an answer than this, on the average of `paceTime`, is
  // dropped.
  std::size_t leastWriteBytesPerSecond = 1024;
  std::chrono::milliseconds paceTime{5'000};
  std::chrono::milliseconds drainTime{
      15'000};  // at a stop: how long running requests may still take
};

}  // namespace tarlo::host
