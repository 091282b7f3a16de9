#pragma once
// The bytes of one connection, plain or under TLS. Reads and writes belong to the connection's
// coroutine; `writeReady`, `writeNow` and `isPeerThere` to the handler's thread, while the
// coroutine waits for the handler. Every wait has a bound, and a client that takes an answer too
// slowly is dropped.

#include <boost/asio/awaitable.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <chrono>
#include <optional>
#include <string_view>
#include <utility>

#include "host/wire/limits.h"
#include "host/wire/pace.h"
#include "host/wire/tls.h"

namespace tarlo::host {

// The socket below TLS. A synchronous write waits in poll(), so that it ends in time; asio's own
// would wait without end, or lose what TLS has encrypted already.
class PatientSocket {
 public:
  using Tcp = boost::asio::ip::tcp;
  using executor_type = boost::beast::tcp_stream::executor_type;
  using lowest_layer_type = Tcp::socket;
  using ErrorCode = boost::system::error_code;

  PatientSocket(Tcp::socket socket, const WireLimits& limits)
      : stream_(std::move(socket)), pace_(limits.leastWriteBytesPerSecond, limits.paceTime) {}

  executor_type get_executor() { return stream_.get_executor(); }
  lowest_layer_type& lowest_layer() { return stream_.socket(); }
  boost::beast::tcp_stream& stream() { return stream_; }
  Pace& pace() { return pace_; }
  int handle() { return stream_.socket().native_handle(); }

  template <class Buffers, class Token>
  auto async_read_some(const Buffers& buffers, Token&& token) {
    return stream_.async_read_some(buffers, std::forward<Token>(token));
  }
  template <class Buffers, class Token>
  auto async_write_some(const Buffers& buffers, Token&& token) {
    return stream_.async_write_some(buffers, std::forward<Token>(token));
  }
  template <class Buffers>
  std::size_t write_some(const Buffers& buffers, ErrorCode& error) {
    return writeSome(*boost::asio::buffer_sequence_begin(buffers), error);
  }
  template <class Buffers>
  std::size_t read_some(const Buffers& buffers, ErrorCode& error) {
    return readSome(*boost::asio::buffer_sequence_begin(buffers), error);
  }

  // Of the synchronous calls that follow.
  void expiresAfter(std::chrono::milliseconds time) { deadline_ = Pace::Clock::now() + time; }
  bool wasTooSlow() const { return tooSlow_; }
  // Ends the connection at once; what the client has not taken is dropped by the system as well.
  void dropTooSlow();

 private:
  std::size_t writeSome(boost::asio::const_buffer buffer, ErrorCode& error);
  std::size_t readSome(boost::asio::mutable_buffer buffer, ErrorCode& error);
  bool wait(short events, ErrorCode& error);

  boost::beast::tcp_stream stream_;
  Pace pace_;
  Pace::Clock::time_point deadline_;
  bool tooSlow_ = false;
};

class Channel {
 public:
  using ErrorCode = boost::system::error_code;
  template <class T>
  using Awaitable = boost::asio::awaitable<T>;

  // `tls` nothing: plain. The limits outlive the channel.
  Channel(boost::asio::ip::tcp::socket socket, TlsContext tls, const WireLimits& limits);

  bool isTls() const { return tls_.has_value(); }
  // Nothing without TLS. Within the time of a header.
  Awaitable<ErrorCode> handshake();
  // Of the reads that follow: the time for all of them together.
  void readWithin(std::chrono::milliseconds time) { socket_.stream().expires_after(time); }
  void readAtLeisure() { socket_.stream().expires_never(); }
  Awaitable<std::pair<ErrorCode, std::size_t>> read(boost::asio::mutable_buffer buffer);
  // False when the client has gone, or was dropped as too slow.
  Awaitable<bool> write(std::string_view bytes);
  // Says good-bye: ends the sending side and takes, within bounds, what the client still sends. A
  // close with bytes unread would reset the connection, and the client would lose its answer.
  Awaitable<void> close();

  // What the client can take at once, as a count of bytes; nothing when it has gone.
  std::optional<std::size_t> writeReady(std::string_view bytes);
  // Waits until all is written. False as for write().
  bool writeNow(std::string_view bytes);
  // False when the client has closed its side or the connection is broken. Bytes that it has sent
  // ahead stay where they are.
  bool isPeerThere();
  bool wasTooSlow() const { return socket_.wasTooSlow(); }
  boost::asio::ip::tcp::endpoint remote() const { return remote_; }

 private:
  bool isWritable();
  bool writeAll(std::string_view bytes);
  Awaitable<void> closeTls();
  Awaitable<void> drain();

  PatientSocket socket_;
  const TlsContext context_;
  std::optional<boost::asio::ssl::stream<PatientSocket&>> tls_;
  const WireLimits& limits_;
  boost::asio::ip::tcp::endpoint remote_;
  bool secured_ = false;  // the handshake is done
  bool ended_ = false;    // nothing more can be written
};

}  // namespace tarlo::host
