#pragma once
// The HTTP/1.1 server: listens, reads requests within limits, runs the handler inline on the thread
// that read the request, and writes the answer. It knows nothing of pages.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "host/wire/limits.h"
#include "host/wire/message.h"

namespace tarlo::host {

class WireServer {
 public:
  struct Options {
    std::string address = "127.0.0.1";
    std::uint16_t port = 0;  // 0: a free one
    WireLimits limits;
    // Requests that pass the gate unasked: health checks. They must be quick.
    std::function<bool(const WireRequest&)> isUrgent = [](const WireRequest&) { return false; };
    // A line for each answered or refused request: method, target, status, bytes, duration.
    struct Access {
      std::string_view id, remote, method, target;
      unsigned status = 0;
      std::size_t bytes = 0;
      std::chrono::microseconds duration{};
    };
    std::function<void(const Access&)> onAccess = [](const Access&) {};
  };

  // Binds and listens; throws std::system_error when the address cannot be had.
  WireServer(Options options, Handler handler);
  // Stops without waiting for running requests longer than the drain time.
  ~WireServer();
  WireServer(const WireServer&) = delete;
  WireServer& operator=(const WireServer&) = delete;

  std::uint16_t port() const;
  // Starts the threads and returns.
  void start();
  // Takes no further connection, lets running requests finish within the drain time, closes idle
  // connections, and returns when all threads have ended. Safe to call twice.
  void stop();

 private:
  struct Core;
  std::unique_ptr<Core> core_;
};

}  // namespace tarlo::host
