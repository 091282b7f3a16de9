#include "host/context/http_response.h"

#include <algorithm>

#include "variant/runtime_error.h"
#include "variant/text.h"

namespace tarlo::host {

void HttpResponse::room(std::size_t more) const {
  if (text_.size() + bytes_.size() + more > mostBytes_) {
    throw RuntimeError(ErrorNumber::OutOfMemory, "the page is larger than the server sends");
  }
}

void HttpResponse::write(std::string_view text) {
  room(text.size());
  text_ += text;
}

void HttpResponse::binaryWrite(std::string_view bytes) {
  room(bytes.size());
  encodePending();
  bytes_ += bytes;
}

void HttpResponse::clear() {
  text_.clear();
  bytes_.clear();
}

void HttpResponse::end() {
  throw frame::PageEnd{};
}

void HttpResponse::reset() {
  clear();
  headers_.clear();
}

void HttpResponse::setHeader(std::string_view name, std::string_view value) {
  for (auto& [known, content] : headers_) {
    if (!variant::equalsNoCase(known, name)) continue;
    content = value;
    return;
  }
  headers_.emplace_back(name, value);
}

void HttpResponse::encodePending() {
  if (charset_ == Charset::Utf8) {
    bytes_ += text_;
  } else if (!text_.empty()) {
    bytes_ += encodeGb18030(text_);
  }
  text_.clear();
}

bool HttpResponse::isTyped() const {
  return std::ranges::any_of(headers_, [](const Header& header) {
    return variant::equalsNoCase(header.first, "Content-Type");
  });
}

// The charset stands in the header, since a page's own meta element may come too late for the
// browser.
void HttpResponse::announceHeaders() {
  if (wire_.isStarted()) return;
  if (!isTyped()) {
    wire_.addHeader("Content-Type", charset_ == Charset::Utf8 ? "text/html; charset=utf-8"
                                                              : "text/html; charset=gb2312");
  }
  for (auto& [name, value] : headers_) wire_.addHeader(std::move(name), std::move(value));
  headers_.clear();
}

void HttpResponse::flush() {
  announceHeaders();
  encodePending();
  wire_.flush(bytes_);
  bytes_.clear();
}

void HttpResponse::finish() {
  announceHeaders();
  encodePending();
  if (wire_.isStarted()) {
    wire_.flush(bytes_);
  } else {
    wire_.send(std::move(bytes_));
  }
  bytes_.clear();
}

}  // namespace tarlo::host
