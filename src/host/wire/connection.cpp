#include "host/wire/connection.h"

#include <fmt/format.h>

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>

#include "host/wire/stream_response.h"

namespace tarlo::host {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;

namespace {

constexpr auto kTuple = asio::as_tuple(asio::use_awaitable);
using Clock = std::chrono::steady_clock;

unsigned statusOf(const beast::error_code& error) {
  if (error == http::error::header_limit) return 431;
  if (error == http::error::body_limit) return 413;
  if (error == http::error::bad_version) return 505;
  if (error == beast::error::timeout) return 408;
  return 400;
}

// A place behind the gate, given back when it goes.
class Turn {
 public:
  explicit Turn(Gate* gate) : gate_(gate) {}
  ~Turn() {
    if (gate_ != nullptr) gate_->leave();
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  Gate* gate_;
};

class ConnectionRun {
 public:
  ConnectionRun(beast::tcp_stream& stream, ConnectionContext& context)
      : stream_(stream), context_(context), limits_(context.options.limits) {
    beast::error_code ignored;
    const auto remote = stream_.socket().remote_endpoint(ignored);
    if (!ignored) {
      remoteAddress_ = remote.address().to_string();
      remotePort_ = remote.port();
    }
  }

  asio::awaitable<void> run() {
    bool goOn = true;
    while (goOn && !context_.stopping) {
      if (!co_await awaitFirstByte()) break;
      goOn = co_await serveOne();
    }
    beast::error_code ignored;
    stream_.socket().shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
  }

 private:
  using Parser = http::request_parser<http::string_body>;

  asio::awaitable<bool> awaitFirstByte() {
    if (buffer_.size() > 0) co_return true;
    stream_.expires_after(limits_.idleTime);
    const auto [error, count] = co_await stream_.async_read_some(buffer_.prepare(4096), kTuple);
    buffer_.commit(count);
    co_return !error;
  }

  // Reads one request and answers it. False when the connection is to close.
  asio::awaitable<bool> serveOne() {
    const BusyCount::Scope busy(context_.busy);
    begin_ = Clock::now();
    Parser parser;
    parser.header_limit(static_cast<std::uint32_t>(limits_.headerBytes));
    parser.body_limit(limits_.bodyBytes);
    stream_.expires_after(limits_.headerTime);
    auto [error, count] = co_await http::async_read_header(stream_, buffer_, parser, kTuple);
    if (!error) error = co_await readBody(parser);
    if (error) {
      co_await refuse(error);
      co_return false;
    }
    co_return co_await answer(parser);
  }

  asio::awaitable<beast::error_code> readBody(Parser& parser) {
    if (parser.is_done()) co_return beast::error_code{};
    stream_.expires_after(limits_.bodyTime);
    if (beast::iequals(parser.get()[http::field::expect], "100-continue")) {
      static constexpr std::string_view kContinue = "HTTP/1.1 100 Continue\r\n\r\n";
      const auto [error, count] = co_await asio::async_write(
          stream_, asio::const_buffer(kContinue.data(), kContinue.size()), kTuple);
      if (error) co_return error;
    }
    const auto [error, count] = co_await http::async_read(stream_, buffer_, parser, kTuple);
    co_return error;
  }

  // A request that could not be read: a status and a close, and nothing at all to a client that
  // sent nothing.
  asio::awaitable<void> refuse(beast::error_code error) {
    if (error == http::error::end_of_stream || error == asio::error::connection_reset) co_return;
    // The expired timer has closed the socket of a slow client.
    const unsigned status = statusOf(error);
    report(WireRequest{nextId(), "-", "-", {}, {}, remoteAddress_, remotePort_}, status, 0);
    if (error == beast::error::timeout) co_return;
    co_await writePlain(status);
  }

  asio::awaitable<void> writePlain(unsigned status) {
    StreamResponse response(stream_.socket(), limits_, true, false);
    response.setStatus(status);
    response.addHeader("Content-Type", "text/plain; charset=utf-8");
    if (status == 503) response.addHeader("Retry-After", "2");
    response.send(fmt::format("{} {}\n", status, reasonOf(status)));
    co_await writeWhole(response, false);
  }

  asio::awaitable<bool> answer(Parser& parser) {
    const bool keepAlive = parser.get().keep_alive() && !context_.stopping;
    const bool http11 = parser.get().version() >= 11;
    WireRequest request = toRequest(parser);
    stream_.expires_never();
    const bool urgent = context_.options.isUrgent(request);
    if (!urgent && !co_await context_.gate.enter()) {
      report(request, 503, 0);
      co_await writePlain(503);
      co_return false;
    }
    StreamResponse response(stream_.socket(), limits_, http11, request.method == "HEAD");
    {
      const Turn turn(urgent ? nullptr : &context_.gate);
      context_.handler(request, response);
    }
    bool goOn = response.finish() && keepAlive;
    if (!response.isStreamed())
      goOn = co_await writeWhole(response, goOn, request.method == "HEAD") && goOn;
    report(request, response.status(), response.bytesSent());
    co_return goOn;
  }

  asio::awaitable<bool> writeWhole(StreamResponse& response, bool keepAlive,
                                   bool headOnly = false) {
    const std::string head = response.takeHead(keepAlive);
    const std::string body = headOnly ? std::string() : response.takeBody();
    const std::array<asio::const_buffer, 2> parts{asio::buffer(head), asio::buffer(body)};
    stream_.expires_after(limits_.writeTime);
    const auto [error, count] = co_await asio::async_write(stream_, parts, kTuple);
    co_return !error;
  }

  WireRequest toRequest(Parser& parser) {
    auto message = parser.release();
    WireRequest request{nextId(),
                        std::string(message.method_string()),
                        std::string(message.target()),
                        {},
                        std::move(message.body()),
                        remoteAddress_,
                        remotePort_};
    for (const auto& field : message) {
      request.headers.emplace_back(std::string(field.name_string()), std::string(field.value()));
    }
    return request;
  }

  std::string nextId() { return fmt::format("{}-{}", context_.runId, ++context_.requestCount); }

  void report(const WireRequest& request, unsigned status, std::size_t bytes) {
    context_.options.onAccess(
        {request.id, request.remoteAddress, request.method, request.target, status, bytes,
         std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin_)});
  }

  beast::tcp_stream& stream_;
  ConnectionContext& context_;
  const WireLimits& limits_;
  beast::flat_buffer buffer_;
  std::string remoteAddress_;
  std::uint16_t remotePort_ = 0;
  Clock::time_point begin_;
};

}  // namespace

asio::awaitable<void> serveConnection(beast::tcp_stream stream, ConnectionContext& context) {
  ConnectionRun run(stream, context);
  co_await run.run();
}

}  // namespace tarlo::host
