#pragma once
// The answer to one request on its channel. A whole page is kept and written by the connection,
// asynchronously; a flushed one is written on the handler's thread, in chunks, or plainly where a
// Content-Length was added. What the client does not take at once is kept up to a bound, so that a
// handler is held by a slow client only where its page is larger. A whole page's length is always
// its own.

#include <cstdint>
#include <optional>

#include "host/wire/channel.h"
#include "host/wire/message.h"

namespace tarlo::host {

class StreamResponse : public WireResponse {
 public:
  // `http11`: chunks are possible and the connection may go on. `headOnly`: the body is counted and
  // not sent.
  StreamResponse(Channel& channel, bool http11, bool headOnly)
      : channel_(channel), http11_(http11), headOnly_(headOnly) {}

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
  // What a flushed answer has not sent yet.
  std::string_view unsent() const { return std::string_view(unsent_).substr(sent_); }
  unsigned status() const { return status_; }
  std::size_t bytesSent() const { return bytes_; }
  bool isStreamed() const { return started_; }

 private:
  std::string framing() const;
  std::string head(std::string_view framing, bool keepAlive) const;
  bool sendUnsent();
  void dropUnsent(std::size_t count);

  Channel& channel_;
  const bool http11_;
  const bool headOnly_;
  unsigned status_ = 200;
  std::vector<Header> headers_;
  std::string body_;
  std::string unsent_;    // of a flushed answer
  std::size_t sent_ = 0;  // of the front of `unsent_`
  std::size_t bytes_ = 0;
  std::optional<std::uint64_t> declared_;  // the length that a flushed answer promises
  bool started_ = false;                   // bytes of a flushed answer are out
  bool complete_ = false;                  // send() was called
  bool broken_ = false;                    // the client has gone
};

}  // namespace tarlo::host
