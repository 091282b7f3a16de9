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
#include <list>
#include <random>
#include <system_error>
#include <thread>
#include <utility>

#include "host/wire/connection.h"

namespace tarlo::host {

namespace asio = boost::asio;
using Tcp = asio::ip::tcp;

namespace {

constexpr auto kTuple = asio::as_tuple(asio::use_awaitable);
// Of those beyond the limit, so many at a time are told so; the others find the connection closed.
constexpr std::size_t kMostSentAway = 128;

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

// One of a bounded number of connections, as long as it lives.
class Seat {
 public:
  Seat(std::atomic<std::size_t>& taken, std::size_t most) : taken_(&taken) {
    if (++taken > most) leave();
  }
  ~Seat() { leave(); }
  Seat(Seat&& other) noexcept : taken_(std::exchange(other.taken_, nullptr)) {}
  Seat& operator=(Seat&&) = delete;
  explicit operator bool() const { return taken_ != nullptr; }

 private:
  void leave() {
    if (taken_ != nullptr) --*std::exchange(taken_, nullptr);
  }

  std::atomic<std::size_t>* taken_;
};

}  // namespace

struct WireServer::Core {
  Core(Options given, Handler givenHandler)
      : options(std::move(given)),
        handler(std::move(givenHandler)),
        tls(loadTls(options.tls)),
        operations(options.limits.running, options.limits.queued, options.limits.queueTime),
        signIns(options.limits.signIns, options.limits.queued, options.limits.queueTime),
        visitors(options.limits.operationsPerSession, options.limits.operationsPerUser),
        io(static_cast<int>(options.limits.threads)),
        acceptor(asio::make_strand(io)),
        context{options, handler,  operations,   signIns,     visitors,
                busy,    stopping, requestCount, freshRunId()} {
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
      // What goes wrong with one connection must not end the taking of others.
      try {
        admit(std::move(socket));
      } catch (...) {
        failCurrent(context, "a connection");
      }
    }
  }

  void admit(Tcp::socket socket) {
    boost::system::error_code ignored;
    socket.set_option(Tcp::no_delay(true), ignored);
    Seat seat(open, options.limits.connections);
    const bool isOneTooMany = !seat;
    Seat taken = isOneTooMany ? Seat(sentAway, kMostSentAway) : std::move(seat);
    if (!taken) return;
    const auto executor = socket.get_executor();
    asio::co_spawn(executor, serve(std::move(socket), std::move(taken), isOneTooMany),
                   asio::detached);
  }

  asio::awaitable<void> serve(Tcp::socket socket, Seat /*taken*/, bool isOneTooMany) {
    co_await serveConnection(std::move(socket), tls.load(), context, isOneTooMany);
  }

  void work() noexcept {
    for (;;) {
      try {
        io.run();
        return;
      } catch (...) {
        failCurrent(context, "a thread");
      }
    }
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
  std::atomic<TlsContext> tls;
  Gate operations;
  Gate signIns;
  VisitorCounts visitors;
  BusyCount busy;
  std::atomic<bool> stopping{false};
  std::atomic<std::uint64_t> requestCount{0};
  std::atomic<std::size_t> open{0};
  std::atomic<std::size_t> sentAway{0};
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
    core_->threads.emplace_back([core = core_.get()] { core->work(); });
  }
}

void WireServer::reloadTls() {
  core_->tls = loadTls(core_->options.tls);
}

void WireServer::stop() {
  core_->stop();
}

}  // namespace tarlo::host
