#include "host/wire/server.h"

#include <fmt/format.h>
#include <malloc.h>

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <list>
#include <random>
#include <system_error>
#include <thread>

#include "host/wire/connection.h"

namespace tarlo::host {

namespace asio = boost::asio;
using Tcp = asio::ip::tcp;

namespace {

constexpr auto kTuple = asio::as_tuple(asio::use_awaitable);
constexpr std::string_view kTooMany =
    "HTTP/1.1 503 Service Unavailable\r\nRetry-After: 2\r\nContent-Length: 0\r\nConnection: "
    "close\r\n\r\n";

// A page's memory comes back with the next page: giving it to the system in between costs a request
// more than its smaller statements.
void keepFreedMemory() {
  constexpr int kKeptBytes = 8 << 20;  // at the end of each thread's heap
  mallopt(M_TRIM_THRESHOLD, kKeptBytes);
}

std::string freshRunId() {
  std::random_device source;
  return fmt::format("{:06x}", source() & 0xFFFFFF);
}

}  // namespace

struct WireServer::Core {
  Core(Options given, Handler givenHandler)
      : options(std::move(given)),
        handler(std::move(givenHandler)),
        gate(options.limits.running, options.limits.queued, options.limits.queueTime),
        io(static_cast<int>(options.limits.threads)),
        acceptor(asio::make_strand(io)),
        context{options, handler, gate, busy, stopping, requestCount, freshRunId()} {
    const Tcp::endpoint endpoint(asio::ip::make_address(options.address), options.port);
    acceptor.open(endpoint.protocol());
    acceptor.set_option(asio::socket_base::reuse_address(true));
    acceptor.bind(endpoint);
    acceptor.listen(asio::socket_base::max_listen_connections);
  }

  asio::awaitable<void> accept() {
    while (!stopping) {
      auto [error, socket] = co_await acceptor.async_accept(asio::make_strand(io), kTuple);
      if (stopping) break;
      if (error) {
        // Out of descriptors or the like: give the others time to end, then go on.
        asio::steady_timer pause(acceptor.get_executor(), std::chrono::milliseconds(50));
        co_await pause.async_wait(kTuple);
        continue;
      }
      admit(std::move(socket));
    }
  }

  void admit(Tcp::socket socket) {
    boost::system::error_code ignored;
    socket.set_option(Tcp::no_delay(true), ignored);
    if (open.fetch_add(1) >= options.limits.connections) {
      socket.non_blocking(true, ignored);
      socket.write_some(asio::buffer(kTooMany.data(), kTooMany.size()), ignored);
      --open;
      return;
    }
    const auto executor = socket.get_executor();
    asio::co_spawn(executor, serve(std::move(socket)),
                   [this](const std::exception_ptr&) { --open; });
  }

  asio::awaitable<void> serve(Tcp::socket socket) {
    boost::beast::tcp_stream stream(std::move(socket));
    co_await serveConnection(std::move(stream), context);
  }

  void stop() {
    if (stopping.exchange(true)) return;
    asio::post(acceptor.get_executor(), [this] {
      boost::system::error_code ignored;
      acceptor.close(ignored);
    });
    busy.waitUntilIdle(options.limits.drainTime);
    io.stop();
    for (auto& thread : threads) thread.join();
    threads.clear();
  }

  const Options options;
  const Handler handler;
  Gate gate;
  BusyCount busy;
  std::atomic<bool> stopping{false};
  std::atomic<std::uint64_t> requestCount{0};
  std::atomic<std::size_t> open{0};
  asio::io_context io;
  Tcp::acceptor acceptor;
  ConnectionContext context;
  std::list<std::thread> threads;
};

WireServer::WireServer(Options options, Handler handler) {
  try {
    core_ = std::make_unique<Core>(std::move(options), std::move(handler));
  } catch (const boost::system::system_error& error) {
    throw std::system_error(error.code());
  }
}

WireServer::~WireServer() {
  core_->stop();
}

std::uint16_t WireServer::port() const {
  return core_->acceptor.local_endpoint().port();
}

void WireServer::start() {
  keepFreedMemory();
  asio::co_spawn(core_->acceptor.get_executor(), core_->accept(), asio::detached);
  for (std::size_t i = 0; i < core_->options.limits.threads; ++i) {
    core_->threads.emplace_back([io = &core_->io] { io->run(); });
  }
}

void WireServer::stop() {
  core_->stop();
}

}  // namespace tarlo::host
