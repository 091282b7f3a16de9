#include "host/wire/stream_response.h"

#include <fmt/format.h>

#include <charconv>

#include "text/fold.h"

namespace tarlo::host {

namespace {

// Of a flushed answer that waits for its client: beyond it the handler waits.
constexpr std::size_t kMostUnsent = 8 << 20;
// What the handler goes on with then.
constexpr std::size_t kFewUnsent = 4 << 20;
constexpr std::string_view kPolicy = "Content-Security-Policy";

// A header value with a line end would let its writer add headers of its own.
bool isOneLine(std::string_view text) {
  return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

// Nothing for a value that is no length.
std::optional<std::uint64_t> declaredLength(std::string_view text) {
  std::uint64_t length = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), length);
  if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
  return length;
}

}  // namespace

void StreamResponse::setStatus(unsigned status) {
  if (!isStarted()) status_ = status;
}

void StreamResponse::addHeader(std::string name, std::string value) {
  if (isStarted() || !isOneLine(name) || !isOneLine(value)) return;
  if (text::equalsNoCase(name, "Content-Length")) {
    declared_ = declaredLength(value);
  } else if (!text::equalsNoCase(name, "Transfer-Encoding")) {
    headers_.emplace_back(std::move(name), std::move(value));
  }
}

void StreamResponse::send(std::string body) {
  if (isStarted()) return;
  body_ = std::move(body);
  bytes_ = body_.size();
  complete_ = true;
}

bool StreamResponse::flush(std::string_view bytes) {
  if (complete_ || broken_) return false;
  if (!started_) {
    started_ = true;
    unsent_ = head(framing(), false);
  }
  // What is beyond the length would be read as the next answer.
  if (declared_) bytes = bytes.substr(0, *declared_ - bytes_);
  if (!bytes.empty() && !headOnly_) {
    bytes_ += bytes.size();
    const bool chunked = !declared_ && http11_;
    if (chunked) unsent_ += fmt::format("{:x}\r\n", bytes.size());
    unsent_ += bytes;
    if (chunked) unsent_ += "\r\n";
  }
  return sendUnsent();
}

bool StreamResponse::finish() {
  if (!started_) {
    complete_ = true;
    return true;
  }
  if (broken_ || !http11_) return false;
  // A client that was promised more sees by the close that the answer is cut.
  if (declared_) return headOnly_ || bytes_ == *declared_;
  if (!headOnly_) unsent_ += "0\r\n\r\n";
  return true;
}

std::string StreamResponse::framing() const {
  if (declared_) return fmt::format("Content-Length: {}\r\n", *declared_);
  return http11_ ? "Transfer-Encoding: chunked\r\n" : "";
}

std::string StreamResponse::takeHead(bool keepAlive) {
  const bool bodiless = status_ == 204 || status_ == 304;
  return head(bodiless ? "" : fmt::format("Content-Length: {}\r\n", body_.size()), keepAlive);
}

std::string StreamResponse::head(std::string_view framing, bool keepAlive) const {
  std::string text = fmt::format("HTTP/1.1 {} {}\r\n", status_, reasonOf(status_));
  bool hasPolicy = false;
  for (const auto& [name, value] : headers_) {
    text += fmt::format("{}: {}\r\n", name, value);
    hasPolicy = hasPolicy || text::equalsNoCase(name, kPolicy);
  }
  text += framing;
  // What its writer says nothing about runs and loads nothing.
  if (!hasPolicy) text += fmt::format("{}: default-src 'none'\r\n", kPolicy);
  if (channel_.isTls()) text += "Strict-Transport-Security: max-age=31536000\r\n";
  // A flushed answer of HTTP/1.1 ends by its last chunk or its length, so only the others announce
  // the close.
  if (!keepAlive && !(started_ && http11_)) text += "Connection: close\r\n";
  return text + "\r\n";
}

bool StreamResponse::sendUnsent() {
  const auto ready = channel_.writeReady(unsent());
  dropUnsent(ready.value_or(0));
  if (!ready) broken_ = true;
  if (broken_ || unsent().size() <= kMostUnsent) return !broken_;
  const std::size_t count = unsent().size() - kFewUnsent;
  if (!channel_.writeNow(unsent().substr(0, count))) broken_ = true;
  dropUnsent(count);
  return !broken_;
}

void StreamResponse::dropUnsent(std::size_t count) {
  sent_ += count;
  // Not for every few bytes: what remains has to be moved.
  if (sent_ * 2 < unsent_.size()) return;
  unsent_.erase(0, sent_);
  sent_ = 0;
}

bool StreamResponse::isClientConnected() {
  return !broken_ && channel_.isPeerThere();
}

}  // namespace tarlo::host
