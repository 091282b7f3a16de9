#include "host/wire/connection.h"

#include <fmt/format.h>

#include <boost/asio/buffer.hpp>
#include <boost/asio/this_coro.hpp>
#include <exception>
#include <optional>
#include <vector>

#include "host/wire/channel.h"
#include "host/wire/request_parser.h"
#include "host/wire/stream_response.h"

namespace tarlo::host {

namespace asio = boost::asio;

namespace {

using Clock = std::chrono::steady_clock;

// Of one read: a header's, so that idle connections hold little, and a body's.
constexpr std::size_t kFewBytes = 4096;
constexpr std::size_t kManyBytes = 65'536;
// A small body goes out together with its head.
constexpr std::size_t kSmallBody = 65'536;
constexpr std::string_view kContinue = "HTTP/1.1 100 Continue\r\n\r\n";
constexpr std::string_view kRetrySeconds = "2";

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
  ConnectionRun(asio::ip::tcp::socket socket, TlsContext tls, ConnectionContext& context)
      : context_(context),
        limits_(context.options.limits),
        channel_(std::move(socket), std::move(tls), limits_),
        remoteAddress_(channel_.remote().address().to_string()) {}

  asio::awaitable<void> run() {
    const auto failure = co_await channel_.handshake();
    if (failure) {
      context_.fail(fmt::format("{} dropped: no TLS, {}", remoteAddress_, failure.message()));
      co_return;
    }
    bool goOn = true;
    while (goOn && !context_.stopping) {
      if (!co_await awaitFirstByte()) break;
      goOn = co_await serveOne();
    }
    if (channel_.wasTooSlow()) reportSlow();
    co_await channel_.close();
  }

  asio::awaitable<void> sendAway() {
    begin_ = Clock::now();
    const auto failure = co_await channel_.handshake();
    if (failure) co_return;
    const WireRequest request = unread();
    co_await writePlain(request, 503, "too many connections");
    co_await channel_.close();
  }

 private:
  std::string_view unreadBytes() const {
    return std::string_view(buffer_.data() + front_, back_ - front_);
  }

  // More bytes behind those that nobody has taken. False when there are none to come.
  asio::awaitable<bool> readMore(std::size_t most) {
    if (front_ == back_) front_ = back_ = 0;
    if (buffer_.size() < back_ + most) buffer_.resize(back_ + most);
    const auto [error, count] = co_await channel_.read(asio::buffer(buffer_.data() + back_, most));
    back_ += count;
    timedOut_ = error == boost::beast::error::timeout;
    co_return !error;
  }

  asio::awaitable<bool> awaitFirstByte() {
    if (front_ < back_) co_return true;
    if (buffer_.size() > kFewBytes) std::vector<char>().swap(buffer_);
    channel_.readWithin(limits_.idleTime);
    const bool isThere = co_await readMore(kFewBytes);
    co_return isThere;
  }

  // Reads one request and answers it. False when the connection is to close.
  asio::awaitable<bool> serveOne() {
    const BusyCount::Scope busy(context_.busy);
    begin_ = Clock::now();
    RequestParser parser(limits_.headerBytes, limits_.bodyBytes);
    channel_.readWithin(limits_.headerTime);
    bool isRead = co_await readUntil(parser, false, kFewBytes);
    if (isRead && !parser.isComplete()) isRead = co_await readBody(parser);
    channel_.readAtLeisure();
    if (isRead) co_return co_await answer(parser);
    co_await refuse(parser);
    co_return false;
  }

  // The whole request or its header. False when it is refused, or no more of it comes.
  asio::awaitable<bool> readUntil(RequestParser& parser, bool isWhole, std::size_t atOnce) {
    bool goOn = true;
    while (goOn && !takeWhatIsThere(parser, isWhole)) {
      goOn = co_await readMore(atOnce);
    }
    co_return goOn&& parser.refusal() == 0;
  }

  // True when no more is to be read: the request is there, as far as it is wanted, or refused.
  bool takeWhatIsThere(RequestParser& parser, bool isWhole) {
    front_ += parser.take(unreadBytes());
    return parser.refusal() != 0 || (isWhole ? parser.isComplete() : parser.isHeaderComplete());
  }

  asio::awaitable<bool> readBody(RequestParser& parser) {
    channel_.readWithin(limits_.bodyTime);
    bool isWanted = true;
    if (parser.expectsContinue()) isWanted = co_await channel_.write(kContinue);
    if (!isWanted) co_return false;
    channel_.readWithin(limits_.bodyTime);
    co_return co_await readUntil(parser, true, kManyBytes);
  }

  // A request that could not be read: a status and a close, and nothing at all to a client that
  // sent nothing, or is so slow that its time has closed the connection.
  asio::awaitable<void> refuse(RequestParser& parser) {
    if (parser.refusal() == 0 && !parser.isBegun()) co_return;
    unsigned status = parser.refusal();
    std::string_view reason = parser.reason();
    if (status == 0) {
      status = timedOut_ ? 408 : 400;
      reason = "the request is not complete";
    }
    WireRequest& request = parser.request();
    if (request.method.empty()) request.method = request.target = "-";
    identify(request);
    context_.fail(fmt::format("{} {} refused: {}", request.id, remoteAddress_, reason));
    if (timedOut_) {
      report(request, status, 0);
    } else {
      co_await writePlain(request, status, reason);
    }
  }

  asio::awaitable<void> writePlain(const WireRequest& request, unsigned status,
                                   std::string_view reason) {
    StreamResponse response(channel_, true, false);
    response.setStatus(status);
    response.addHeader("Content-Type", "text/plain; charset=utf-8");
    if (status == 503) response.addHeader("Retry-After", std::string(kRetrySeconds));
    response.send(fmt::format("{} {}: {}\n", status, reasonOf(status), reason));
    report(request, status, response.bytesSent());
    co_await writeWhole(response, false, false);
  }

  asio::awaitable<bool> answer(RequestParser& parser) {
    WireRequest& request = parser.request();
    identify(request);
    const Lane lane = context_.options.laneOf(request);
    // Left when the handler is done, before the client can see the answer and ask again.
    std::optional<VisitorCounts::Place> place;
    if (lane == Lane::Operation) {
      place.emplace(context_.visitors, context_.options.visitorOf(request));
      if (!*place) {
        context_.fail(fmt::format("{} refused: user \"{}\" has too many operations at a time",
                                  request.id, place->visitor().user));
        co_return co_await turnDown(request, 429);
      }
    }
    Gate* const gate = gateOf(lane);
    bool hasTurn = true;
    if (gate != nullptr) hasTurn = co_await gate->enter();
    if (hasTurn) co_return co_await handle(parser, gate, place);
    place.reset();
    co_return co_await turnDown(request, 503);
  }

  // The body is the site's: people may read it.
  asio::awaitable<bool> turnDown(const WireRequest& request, unsigned status) {
    const bool headOnly = request.method == "HEAD";
    StreamResponse response(channel_, true, headOnly);
    try {
      context_.options.turnDown(request, status, response);
    } catch (...) {
      failCurrent(context_, request.id);
      response.setStatus(status);
    }
    response.finish();
    report(request, status, response.bytesSent());
    co_await writeWhole(response, false, headOnly);
    co_return false;
  }

  asio::awaitable<bool> handle(RequestParser& parser, Gate* gate,
                               std::optional<VisitorCounts::Place>& place) {
    const WireRequest& request = parser.request();
    StreamResponse response(channel_, parser.isHttp11(), request.method == "HEAD");
    bool goOn = runHandler(request, response, gate) && parser.keepsAlive() && !context_.stopping;
    place.reset();
    if (response.isStreamed()) {
      goOn = co_await channel_.write(response.unsent()) && goOn;
    } else {
      goOn = co_await writeWhole(response, goOn, request.method == "HEAD") && goOn;
    }
    report(request, response.status(), response.bytesSent());
    co_return goOn;
  }

  // False when the connection must close behind the answer.
  bool runHandler(const WireRequest& request, StreamResponse& response, Gate* gate) {
    const Turn turn(gate);
    try {
      context_.handler(request, response);
      return response.finish();
    } catch (...) {
      failCurrent(context_, request.id);
    }
    // What a flushed answer has sent stays; that it does not end says that it is cut.
    if (response.isStarted()) return false;
    response.setStatus(500);
    response.send("");
    return false;
  }

  asio::awaitable<bool> writeWhole(StreamResponse& response, bool keepAlive, bool headOnly) {
    std::string head = response.takeHead(keepAlive);
    const std::string body = headOnly ? std::string() : response.takeBody();
    const bool isSmall = body.size() <= kSmallBody;
    if (isSmall) head += body;
    const bool isOut = co_await channel_.write(head);
    if (!isOut || isSmall) co_return isOut;
    co_return co_await channel_.write(body);
  }

  Gate* gateOf(Lane lane) {
    if (lane == Lane::Immediate) return nullptr;
    return lane == Lane::SignIn ? &context_.signIns : &context_.operations;
  }

  WireRequest unread() {
    WireRequest request;
    request.method = request.target = "-";
    identify(request);
    return request;
  }

  void identify(WireRequest& request) {
    request.id = fmt::format("{}-{}", context_.runId, ++context_.requestCount);
    request.remoteAddress = remoteAddress_;
    request.remotePort = channel_.remote().port();
    request.isSecure = channel_.isTls();
    lastId_ = request.id;
  }

  void report(const WireRequest& request, unsigned status, std::size_t bytes) {
    context_.options.onAccess(
        {request.id, request.remoteAddress, request.method, request.target, status, bytes,
         std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin_)});
  }

  void reportSlow() {
    context_.fail(fmt::format("{} {} dropped: it takes less than {} bytes a second", lastId_,
                              remoteAddress_, limits_.leastWriteBytesPerSecond));
  }

  ConnectionContext& context_;
  const WireLimits& limits_;
  Channel channel_;
  const std::string remoteAddress_;
  std::vector<char> buffer_;
  std::size_t front_ = 0, back_ = 0;  // what of it nobody has taken yet
  bool timedOut_ = false;
  std::string lastId_;
  Clock::time_point begin_;
};

}  // namespace

void ConnectionContext::fail(std::string_view what) const noexcept {
  try {
    options.onFailure(what);
  } catch (...) {
    // Nobody is left to tell.
  }
}

void failCurrent(const ConnectionContext& context, std::string_view where) noexcept {
  try {
    try {
      throw;
    } catch (const std::bad_alloc&) {
      context.fail("no memory");  // nor for a longer line
    } catch (const std::exception& error) {
      context.fail(fmt::format("{} failed: {}", where, error.what()));
    } catch (...) {
      context.fail(fmt::format("{} failed: an exception of an unknown kind", where));
    }
  } catch (...) {
    context.fail("a connection failed");
  }
}

asio::awaitable<void> serveConnection(asio::ip::tcp::socket socket, TlsContext tls,
                                      ConnectionContext& context, bool isOneTooMany) {
  try {
    ConnectionRun run(std::move(socket), std::move(tls), context);
    if (isOneTooMany) {
      co_await run.sendAway();
    } else {
      co_await run.run();
    }
  } catch (...) {
    failCurrent(context, "a connection");
  }
}

}  // namespace tarlo::host
