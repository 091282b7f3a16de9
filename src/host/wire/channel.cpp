#include "host/wire/channel.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <boost/asio/as_tuple.hpp>
#include <boost/asio/error.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <cerrno>
#include <memory>

namespace tarlo::host {

namespace asio = boost::asio;
using std::chrono::milliseconds;
using Tcp = asio::ip::tcp;

namespace {

constexpr auto kTuple = asio::as_tuple(asio::use_awaitable);

// Of one write: small enough that even a slow client takes it within the time of a write.
constexpr std::size_t kPiece = 256 * 1024;
// A writable socket takes one record of TLS without a wait.
constexpr std::size_t kReadyPiece = 16 * 1024;
constexpr milliseconds kGoodbyeTime{2'000};
constexpr milliseconds kDrainTime{5'000};
constexpr std::size_t kMostDrained = 32 << 20;

// Drops a client that takes an answer too slowly, while a coroutine waits for the write. It works
// on the connection's strand.
class PaceWatch {
 public:
  explicit PaceWatch(PatientSocket& socket) : state_(std::make_shared<State>(socket)) {
    socket.pace().begin(socket.handle());
    arm(state_);
  }
  ~PaceWatch() {
    state_->socket = nullptr;
    state_->timer.cancel();
  }
  PaceWatch(const PaceWatch&) = delete;
  PaceWatch& operator=(const PaceWatch&) = delete;

 private:
  struct State {
    explicit State(PatientSocket& watched)
        : socket(&watched), timer(watched.get_executor()), window(watched.pace().window()) {}
    PatientSocket* socket;  // nothing when the write is over
    asio::steady_timer timer;
    milliseconds window;
  };

  static void arm(const std::shared_ptr<State>& state) {
    // A little longer than the window, which must be over when it is asked for.
    state->timer.expires_after(state->window + milliseconds(5));
    state->timer.async_wait([state](const boost::system::error_code& error) {
      if (error || state->socket == nullptr) return;
      if (state->socket->pace().isTooSlow(state->socket->handle())) {
        state->socket->dropTooSlow();
      } else {
        arm(state);
      }
    });
  }

  const std::shared_ptr<State> state_;
};

}  // namespace

void PatientSocket::dropTooSlow() {
  tooSlow_ = true;
  ErrorCode ignored;
  stream_.socket().set_option(asio::socket_base::linger(true, 0), ignored);
  stream_.socket().close(ignored);
}

// Waits for the socket, at most until the deadline. False with the reason in `error`.
bool PatientSocket::wait(short events, ErrorCode& error) {
  const auto left = std::chrono::duration_cast<milliseconds>(deadline_ - Pace::Clock::now());
  if (left.count() <= 0) {
    error = asio::error::timed_out;
    return false;
  }
  pollfd question{handle(), events, 0};
  const auto longest = std::min(left, pace_.window() + milliseconds(1));
  if (::poll(&question, 1, static_cast<int>(longest.count())) < 0 && errno != EINTR) {
    error.assign(errno, boost::system::system_category());
    return false;
  }
  if ((events & POLLOUT) != 0 && pace_.isTooSlow(handle())) {
    dropTooSlow();
    error = asio::error::timed_out;
    return false;
  }
  return true;
}

std::size_t PatientSocket::writeSome(asio::const_buffer buffer, ErrorCode& error) {
  error = {};
  if (buffer.size() == 0) return 0;
  for (;;) {
    const ssize_t sent =
        ::send(handle(), buffer.data(), buffer.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent >= 0) return static_cast<std::size_t>(sent);
    if (errno == EINTR) continue;
    if (errno != EAGAIN && errno != EWOULDBLOCK) {
      error.assign(errno, boost::system::system_category());
      return 0;
    }
    if (!wait(POLLOUT, error)) return 0;
  }
}

std::size_t PatientSocket::readSome(asio::mutable_buffer buffer, ErrorCode& error) {
  error = {};
  if (buffer.size() == 0) return 0;
  for (;;) {
    const ssize_t got = ::recv(handle(), buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (got > 0) return static_cast<std::size_t>(got);
    if (got == 0) {
      error = asio::error::eof;
      return 0;
    }
    if (errno == EINTR) continue;
    if (errno != EAGAIN && errno != EWOULDBLOCK) {
      error.assign(errno, boost::system::system_category());
      return 0;
    }
    if (!wait(POLLIN, error)) return 0;
  }
}

Channel::Channel(Tcp::socket socket, TlsContext tls, const WireLimits& limits)
    : socket_(std::move(socket), limits), context_(std::move(tls)), limits_(limits) {
  ErrorCode ignored;
  remote_ = socket_.lowest_layer().remote_endpoint(ignored);
  if (context_ != nullptr) tls_.emplace(socket_, *context_);
}

asio::awaitable<Channel::ErrorCode> Channel::handshake() {
  if (!tls_) co_return ErrorCode{};
  socket_.stream().expires_after(limits_.headerTime);
  const auto [error] = co_await tls_->async_handshake(asio::ssl::stream_base::server, kTuple);
  secured_ = !error;
  ended_ = !secured_;
  co_return error;
}

asio::awaitable<std::pair<Channel::ErrorCode, std::size_t>> Channel::read(
    asio::mutable_buffer buffer) {
  std::pair<ErrorCode, std::size_t> result;
  if (tls_) {
    const auto [error, count] = co_await tls_->async_read_some(buffer, kTuple);
    result = {error, count};
  } else {
    const auto [error, count] = co_await socket_.async_read_some(buffer, kTuple);
    result = {error, count};
  }
  co_return result;
}

asio::awaitable<bool> Channel::write(std::string_view bytes) {
  // Most answers fit into what the system takes at once.
  const auto ready = writeReady(bytes);
  if (!ready) co_return false;
  bytes.remove_prefix(*ready);
  if (bytes.empty()) co_return true;
  const PaceWatch watch(socket_);
  while (!bytes.empty() && !ended_) {
    const asio::const_buffer piece(bytes.data(), std::min(bytes.size(), kPiece));
    socket_.stream().expires_after(limits_.writeTime);
    ErrorCode failure;
    if (tls_) {
      const auto [error, count] = co_await asio::async_write(*tls_, piece, kTuple);
      failure = error;
    } else {
      const auto [error, count] = co_await asio::async_write(socket_, piece, kTuple);
      failure = error;
    }
    if (failure) ended_ = true;
    bytes.remove_prefix(piece.size());
  }
  co_return !ended_;
}

bool Channel::isWritable() {
  pollfd question{socket_.handle(), POLLOUT, 0};
  return ::poll(&question, 1, 0) > 0 && (question.revents & POLLOUT) != 0;
}

std::optional<std::size_t> Channel::writeReady(std::string_view bytes) {
  std::size_t written = 0;
  while (!ended_ && written < bytes.size() && isWritable()) {
    const std::string_view piece = bytes.substr(written, kReadyPiece);
    if (!writeAll(piece)) break;
    written += piece.size();
  }
  if (ended_) return std::nullopt;
  return written;
}

bool Channel::writeNow(std::string_view bytes) {
  for (; !bytes.empty() && !ended_; bytes.remove_prefix(std::min(bytes.size(), kPiece)))
    writeAll(bytes.substr(0, kPiece));
  return !ended_;
}

bool Channel::writeAll(std::string_view bytes) {
  if (!socket_.lowest_layer().is_open()) ended_ = true;
  if (ended_) return false;
  socket_.expiresAfter(limits_.writeTime);
  socket_.pace().begin(socket_.handle());
  ErrorCode error;
  const asio::const_buffer buffer(bytes.data(), bytes.size());
  if (tls_) {
    asio::write(*tls_, buffer, error);
  } else {
    asio::write(socket_, buffer, error);
  }
  if (error) ended_ = true;
  return !ended_;
}

bool Channel::isPeerThere() {
  if (ended_) return false;
  pollfd question{socket_.handle(), POLLRDHUP, 0};
  const int found = ::poll(&question, 1, 0);
  return found == 0 || (found < 0 && errno == EINTR);
}

asio::awaitable<void> Channel::closeTls() {
  socket_.stream().expires_after(kGoodbyeTime);
  // It fails where the client goes on sending or does not answer; the good-bye is out then.
  co_await tls_->async_shutdown(kTuple);
}

asio::awaitable<void> Channel::close() {
  if (!socket_.lowest_layer().is_open()) co_return;
  if (secured_ && !ended_) co_await closeTls();
  ErrorCode ignored;
  socket_.lowest_layer().shutdown(Tcp::socket::shutdown_send, ignored);
  if (!ignored) co_await drain();
  socket_.lowest_layer().close(ignored);
}

asio::awaitable<void> Channel::drain() {
  const auto dropped = std::make_unique<std::array<char, 16 * 1024>>();
  std::size_t drained = 0;
  socket_.stream().expires_after(kDrainTime);
  while (drained < kMostDrained) {
    const auto [error, count] = co_await socket_.async_read_some(asio::buffer(*dropped), kTuple);
    if (error) break;
    drained += count;
  }
}

}  // namespace tarlo::host
