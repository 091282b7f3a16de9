#include "host/context/http_request.h"

#include "text/fold.h"

namespace tarlo::host {

namespace {

constexpr std::string_view kUrlEncoded = "application/x-www-form-urlencoded";
constexpr std::string_view kMultipart = "multipart/form-data";

bool isType(std::string_view contentType, std::string_view type) {
  return text::equalsNoCase(contentType.substr(0, type.size()), type);
}

Values parseForm(const WireRequest& wire) {
  const std::string_view contentType = wire.header("Content-Type");
  if (isType(contentType, kMultipart)) return parseMultipart(wire.body, contentType);
  if (!isType(contentType, kUrlEncoded)) return {};
  Charset declared;
  return parseUrlEncoded(wire.body, charsetOf(contentType, declared) ? &declared : nullptr);
}

// "HTTP_USER_AGENT" asks for the header "User-Agent".
std::string headerOfVariable(std::string_view name) {
  std::string header(name.substr(5));
  for (char& c : header) {
    if (c == '_') c = '-';
  }
  return header;
}

}  // namespace

const Values& HttpRequest::query() const {
  if (!query_) query_ = parseUrlEncoded(wire_.query());
  return *query_;
}

const Values& HttpRequest::form() const {
  if (!form_) form_ = parseForm(wire_);
  return *form_;
}

const Values& HttpRequest::cookies() const {
  if (!cookies_) cookies_ = parseCookies(wire_.header("Cookie"));
  return *cookies_;
}

Variant HttpRequest::value(std::string_view key) const {
  std::string text;
  if (query().find(key, text) || form().find(key, text) || cookies().find(key, text)) return text;
  return serverVariable(key);
}

Variant HttpRequest::serverVariable(std::string_view name) const {
  const std::string folded = text::foldedName(name);
  if (folded == "request_method") return wire_.method;
  if (folded == "query_string") return wire_.query();
  if (folded == "url" || folded == "path_info" || folded == "script_name") return wire_.path();
  if (folded == "remote_addr") return wire_.remoteAddress;
  if (folded == "server_name")
    return wire_.header("Host").substr(0, wire_.header("Host").find(':'));
  if (folded == "content_type") return wire_.header("Content-Type");
  if (folded == "content_length") return std::to_string(wire_.body.size());
  if (!folded.starts_with("http_")) return {};
  const std::string_view header = wire_.header(headerOfVariable(folded));
  return header.empty() ? Variant() : Variant(decodeText(header));
}

std::string HttpRequest::cookie(std::string_view name) const {
  std::string value;
  cookies().find(name, value);
  return value;
}

}  // namespace tarlo::host
