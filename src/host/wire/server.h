#pragma once
// The HTTP/1.1 server, plain or over TLS: listens, reads requests within limits, runs the handler
// inline on the thread that read the request, and writes the answer. It knows nothing of pages.
// What is thrown while a connection is served ends that connection and nothing else.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "host/wire/limits.h"
#include "host/wire/message.h"
#include "host/wire/tls.h"

namespace tarlo::host {

class WireServer {
 public:
  struct Options {
    std::string address = "127.0.0.1";
    std::uint16_t port = 0;  // 0: a free one
    WireLimits limits;
    TlsFiles tls;  // none: plain HTTP
    std::function<Lane(const WireRequest&)> laneOf = [](const WireRequest&) {
      return Lane::Operation;
    };
    // Asked for operations, before they wait. It must be quick.
    std::function<Visitor(const WireRequest&)> visitorOf = [](const WireRequest&) {
      return Visitor{};
    };
    // Answers a request that found no place: 429 when its visitor has too many, 503 when all are
    // taken. Nothing is read or written for it beside.
    std::function<void(const WireRequest&, unsigned status, WireResponse&)> turnDown =
        [](const WireRequest&, unsigned status, WireResponse& response) {
          response.setStatus(status);
          response.addHeader("Retry-After", "2");
          response.send("");
        };
    // A line for each answered or refused request: method, target, status, bytes, duration.
    struct Access {
      std::string_view id, remote, method, target;
      unsigned status = 0;
      std::size_t bytes = 0;
      std::chrono::microseconds duration{};
    };
    std::function<void(const Access&)> onAccess = [](const Access&) {};
    // A line for whatever ended a connection before its time: an exception, a client that is too
    // slow, a visitor with too many operations.
    std::function<void(std::string_view)> onFailure = [](std::string_view) {};
  };

  // Binds and listens; throws std::system_error when the address cannot be had, and TlsError for
  // faulty files.
  WireServer(Options options, Handler handler);
  // Stops without waiting for running requests longer than the drain time.
  ~WireServer();
  WireServer(const WireServer&) = delete;
  WireServer& operator=(const WireServer&) = delete;

  std::uint16_t port() const;
  // Starts the threads and returns.
  void start();
  // Reads the files of Options::tls again, for the connections from here on. Throws TlsError; the
  // pair that was there stays then.
  void reloadTls();
  // Takes no further connection, lets running requests finish within the drain time, closes idle
  // connections, and returns when all threads have ended. Safe to call twice.
  void stop();

 private:
  struct Core;
  std::unique_ptr<Core> core_;
};

}  // namespace tarlo::host
