#include "host/context/http_server.h"

#include <fmt/format.h>

#include "variant/runtime_error.h"

namespace tarlo::host {

std::shared_ptr<Object> HttpServer::createObject(std::string_view progId) {
  const auto found = factories_.find(progId);
  if (found == factories_.end()) {
    throw RuntimeError(ErrorNumber::CannotCreateObject, std::string(progId));
  }
  return found->second();
}

std::string HttpServer::urlEncode(std::string_view text) const {
  const std::string bytes = charset_ == Charset::Utf8 ? std::string(text) : encodeGb18030(text);
  std::string encoded;
  encoded.reserve(bytes.size() * 3);
  for (const char c : bytes) {
    const bool plain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                       c == '-' || c == '_' || c == '.';
    if (plain) {
      encoded += c;
    } else if (c == ' ') {
      encoded += '+';
    } else {
      encoded += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
  }
  return encoded;
}

Variant HttpApplication::get(std::string_view key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? Variant() : found->second;
}

}  // namespace tarlo::host
