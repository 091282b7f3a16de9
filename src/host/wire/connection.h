#pragma once
// One connection from its first byte to its last: reads requests, waits for a turn in their lane,
// runs the handler, writes the answer, and goes on while both sides want to.

#include <atomic>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/ip/tcp.hpp>

#include "host/wire/busy_count.h"
#include "host/wire/gate.h"
#include "host/wire/server.h"
#include "host/wire/tls.h"
#include "host/wire/visitor_counts.h"

namespace tarlo::host {

// What the connections of a server share.
struct ConnectionContext {
  const WireServer::Options& options;
  const Handler& handler;
  Gate& operations;
  Gate& signIns;
  VisitorCounts& visitors;
  BusyCount& busy;
  std::atomic<bool>& stopping;
  std::atomic<std::uint64_t>& requestCount;
  std::string runId;  // in front of request ids: another one for every start

  // Reports what went wrong; nothing comes out of it.
  void fail(std::string_view what) const noexcept;
};

// The exception that is being handled, in words, behind `where`.
void failCurrent(const ConnectionContext& context, std::string_view where) noexcept;

// Serves the connection to its end, or sends it away with 503 when there are too many. Nothing but
// the lack of memory for its own frame comes out of it.
boost::asio::awaitable<void> serveConnection(boost::asio::ip::tcp::socket socket, TlsContext tls,
                                             ConnectionContext& context, bool isOneTooMany);

}  // namespace tarlo::host
