#include "host/wire/message.h"

#include "text/fold.h"

namespace tarlo::host {

std::string_view WireRequest::header(std::string_view name) const {
  for (const auto& [key, value] : headers) {
    if (text::equalsNoCase(key, name)) return value;
  }
  return {};
}

std::string_view WireRequest::path() const {
  return std::string_view(target).substr(0, target.find('?'));
}

std::string_view WireRequest::query() const {
  const auto question = target.find('?');
  return question == std::string::npos ? std::string_view{}
                                       : std::string_view(target).substr(question + 1);
}

std::string_view reasonOf(unsigned status) {
  static constexpr std::pair<unsigned, std::string_view> kReasons[] = {
      {200, "OK"},
      {204, "No Content"},
      {206, "Partial Content"},
      {302, "Found"},
      {303, "See Other"},
      {304, "Not Modified"},
      {400, "Bad Request"},
      {401, "Unauthorized"},
      {403, "Forbidden"},
      {404, "Not Found"},
      {405, "Method Not Allowed"},
      {408, "Request Timeout"},
      {409, "Conflict"},
      {413, "Content Too Large"},
      {429, "Too Many Requests"},
      {431, "Request Header Fields Too Large"},
      {500, "Internal Server Error"},
      {501, "Not Implemented"},
      {503, "Service Unavailable"},
      {505, "HTTP Version Not Supported"}};
  for (const auto& [number, reason] : kReasons) {
    if (number == status) return reason;
  }
  return {};
}

}  // namespace tarlo::host
