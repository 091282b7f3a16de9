#include "host/wire/stream_response.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <charconv>

#include "variant/text.h"

namespace tarlo::host {

namespace {

// A header value with a line end would let its writer add headers of its own.
bool isOneLine(std::string_view text) {
  return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

// Nothing for a value that is no length.
std::optional<std::uint64_t> lengthOf(std::string_view text) {
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
  if (variant::equalsNoCase(name, "Content-Length")) {
    declared_ = lengthOf(value);
  } else if (!variant::equalsNoCase(name, "Transfer-Encoding")) {
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
    if (!writeNow(head(framing(), false))) return false;
  }
  // What is beyond the length would be read as the next answer.
  if (declared_) bytes = bytes.substr(0, *declared_ - bytes_);
  if (bytes.empty() || headOnly_) return true;
  bytes_ += bytes.size();
  if (declared_ || !http11_) return writeNow(bytes);
  return writeNow(fmt::format("{:x}\r\n", bytes.size())) && writeNow(bytes) && writeNow("\r\n");
}

bool StreamResponse::finish() {
  if (!started_) {
    complete_ = true;
    return true;
  }
  if (broken_ || !http11_) return false;
  // A client that was promised more sees by the close that the answer is cut.
  if (declared_) return headOnly_ || bytes_ == *declared_;
  return headOnly_ || writeNow("0\r\n\r\n");
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
  for (const auto& [name, value] : headers_) text += fmt::format("{}: {}\r\n", name, value);
  text += framing;
  // A flushed answer of HTTP/1.1 ends by its last chunk or its length, so only the others announce
  // the close.
  if (!keepAlive && !(started_ && http11_)) text += "Connection: close\r\n";
  return text + "\r\n";
}

bool StreamResponse::writeNow(std::string_view bytes) {
  const auto deadline = std::chrono::steady_clock::now() + limits_.writeTime;
  while (!bytes.empty() && !broken_) {
    const ssize_t sent = ::send(socket_.native_handle(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(sent));
      continue;
    }
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    pollfd wait{socket_.native_handle(), POLLOUT, 0};
    const bool full = errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    if (!full || left.count() <= 0 || ::poll(&wait, 1, static_cast<int>(left.count())) < 0)
      broken_ = true;
  }
  return !broken_;
}

bool StreamResponse::isClientConnected() {
  if (broken_) return false;
  char byte = 0;
  const ssize_t got = ::recv(socket_.native_handle(), &byte, 1, MSG_PEEK | MSG_DONTWAIT);
  if (got == 0 || (got < 0 && errno != EAGAIN && errno != EWOULDBLOCK)) broken_ = true;
  return !broken_;
}

}  // namespace tarlo::host
