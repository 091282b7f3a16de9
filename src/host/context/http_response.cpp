#include "host/context/http_response.h"

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

void HttpResponse::setHeader(std::string_view name, std::string_view value) {
  if (variant::equalsNoCase(name, "Content-Type")) typed_ = true;
  wire_.addHeader(std::string(name), std::string(value));
}

void HttpResponse::encodePending() {
  if (charset_ == Charset::Utf8) {
    bytes_ += text_;
  } else if (!text_.empty()) {
    bytes_ += encodeGb18030(text_);
  }
  text_.clear();
}

// The charset stands in the header, since a page's own meta element may come too late for the
// browser.
void HttpResponse::announceType() {
  if (typed_) return;
  setHeader("Content-Type",
            charset_ == Charset::Utf8 ? "text/html; charset=utf-8" : "text/html; charset=gb2312");
}

void HttpResponse::flush() {
  announceType();
  encodePending();
  wire_.flush(bytes_);
  bytes_.clear();
}

void HttpResponse::finish() {
  announceType();
  encodePending();
  if (wire_.isStarted()) {
    wire_.flush(bytes_);
  } else {
    wire_.send(std::move(bytes_));
  }
  bytes_.clear();
}

}  // namespace tarlo::host
