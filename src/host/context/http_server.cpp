#include "host/context/http_server.h"

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
  return frame::urlEncodeBytes(bytes, "-_.");
}

Variant HttpApplication::get(std::string_view key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? Variant() : found->second;
}

}  // namespace tarlo::host
