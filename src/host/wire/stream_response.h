#pragma once
// The answer to one request on its socket. A whole page is kept and written by the connection,
// asynchronously; a flushed one is written at once, on the handler's thread: in chunks, or plainly
// where a Content-Length was added. A whole page's length is always its own.

#include <boost/asio/ip/tcp.hpp>
#include <cstdint>
#include <optional>

#include "host/wire/limits.h"
#include "host/wire/message.h"

namespace tarlo::host {

class StreamResponse : public WireResponse {
 public:
  // `http11`: chunks are possible and the connection may go on. `headOnly`: the body is counted and
  // not sent.
  StreamResponse(boost::asio::ip::tcp::socket& socket, const WireLimits& limits, bool http11,
                 bool headOnly)
      : socket_(socket), limits_(limits), http11_(http11), headOnly_(headOnly) {}

  void setStatus(unsigned status) override;
  void addHeader(std::string name, std::string value) override;
  void send(std::string body) override;
  bool flush(std::string_view bytes) override;
  bool isStarted() const override { return started_ || complete_; }
  bool isClientConnected() override;

  // Ends a flushed answer, or completes an unanswered one with what is there. False when the
  // connection must close.
  bool finish();
  // Header and body of an answer that was not flushed; empty for a flushed one, which is out
  // already.
  std::string takeHead(bool keepAlive);
  std::string takeBody() { return std::move(body_); }
  unsigned status() const { return status_; }
  std::size_t bytesSent() const { return bytes_; }
  bool isStreamed() const { return started_; }

 private:
  std::string framing() const;
  std::string head(std::string_view framing, bool keepAlive) const;
  bool writeNow(std::string_view bytes);

  boost::asio::ip::tcp::socket& socket_;
  const WireLimits& limits_;
  const bool http11_;
  const bool headOnly_;
  unsigned status_ = 200;
  std::vector<Header> headers_;
  std::string body_;
  std::size_t bytes_ = 0;
  std::optional<std::uint64_t> declared_;  // the length that a flushed answer promises
  bool started_ = false;                   // bytes of a flushed answer are out
  bool complete_ = false;                  // send() was called
  bool broken_ = false;                    // the client has gone
};

}  // namespace tarlo::host
