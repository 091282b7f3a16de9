#pragma once
// One connection from its first byte to its last: reads requests, waits for a turn at the gate,
// runs the handler, writes the answer, and goes on while both sides want to.

#include <atomic>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/tcp_stream.hpp>

#include "host/wire/busy_count.h"
#include "host/wire/gate.h"
#include "host/wire/server.h"

namespace tarlo::host {

// What the connections of a server share.
struct ConnectionContext {
  const WireServer::Options& options;
  const Handler& handler;
  Gate& gate;
  BusyCount& busy;
  std::atomic<bool>& stopping;
  std::atomic<std::uint64_t>& requestCount;
  std::string runId;  // in front of request ids: another one for every start
};

boost::asio::awaitable<void> serveConnection(boost::beast::tcp_stream stream,
                                             ConnectionContext& context);

}  // namespace tarlo::host
