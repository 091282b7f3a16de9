#include "host/context/http_response.h"

#include <algorithm>

#include "host/context/content_policy.h"
#include "text/fold.h"
#include "variant/runtime_error.h"

namespace tarlo::host {

namespace {

constexpr std::string_view kNoStore = "no-store";

}  // namespace

void HttpResponse::takeRoom(std::size_t more) const {
  if (!hasRoom(more)) {
    throw RuntimeError(ErrorNumber::OutOfMemory, "the page is larger than the server sends");
  }
}

void HttpResponse::write(std::string_view text) {
  takeRoom(text.size());
  text_ += text;
}

void HttpResponse::binaryWrite(std::string_view bytes) {
  takeRoom(bytes.size());
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
  const auto known = std::ranges::find_if(
      headers_, [&](const Header& header) { return text::equalsNoCase(header.first, name); });
  if (known == headers_.end()) {
    headers_.emplace_back(name, value);
    return;
  }
  // Pages know "no-cache" alone, under which caches may keep what a signed-in user was shown.
  const bool mustStay = text::equalsNoCase(name, "Cache-Control") &&
                        known->second.ends_with(kNoStore) && !value.ends_with(kNoStore);
  known->second = std::string(value).append(mustStay ? ", " : "").append(mustStay ? kNoStore : "");
}

void HttpResponse::encodePending() {
  if (charset_ == Charset::Utf8) {
    bytes_ += text_;
  } else if (!text_.empty()) {
    bytes_ += encodeGb18030(text_);
  }
  text_.clear();
}

const std::string* HttpResponse::header(std::string_view name) const {
  const auto found = std::ranges::find_if(
      headers_, [&](const Header& header) { return text::equalsNoCase(header.first, name); });
  return found == headers_.end() ? nullptr : &found->second;
}

bool HttpResponse::isTyped() const {
  return header("Content-Type") != nullptr;
}

// The charset stands in the header, since a page's own meta element may come too late for the
// browser.
void HttpResponse::announceHeaders() {
  if (wire_.isStarted()) return;
  if (!isTyped()) {
    wire_.addHeader("Content-Type", charset_ == Charset::Utf8 ? "text/html; charset=utf-8"
                                                              : "text/html; charset=gb2312");
  }
  if (header(kContentPolicy) == nullptr) {
    const std::string* type = header("Content-Type");
    const bool isPage = type == nullptr || type->starts_with("text/html");
    setHeader(kContentPolicy, isPage ? platformPolicy() : dataPolicy());
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
