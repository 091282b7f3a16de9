#include "host/site/same_origin.h"

#include <fmt/format.h>

#include "host/api/api.h"
#include "host/site/log_text.h"
#include "host/site/notice.h"
#include "text/fold.h"

namespace tarlo::host {

namespace {

// "http://host:80/a?b" has the scheme "http" and the authority "host:80"; an address without "://"
// has neither, as the Origin "null" of a page whose origin the browser hides.
struct Address {
  explicit Address(std::string_view text) {
    const auto end = text.find("://");
    if (end == std::string_view::npos) return;
    scheme = text.substr(0, end);
    authority = text.substr(end + 3);
    rest = authority.substr(std::min(authority.find_first_of("/?#"), authority.size()));
    authority.remove_suffix(rest.size());
  }
  std::string_view scheme, authority, rest;
};

bool isOwn(const Address& address, const WireRequest& request, SiteScheme scheme) {
  const bool isSecure = text::equalsNoCase(address.scheme, "https");
  const bool isClear = text::equalsNoCase(address.scheme, "http");
  if (!isSecure && (!isClear || scheme == SiteScheme::HttpsOnly)) return false;
  const std::string_view host = request.header("Host");
  return !host.empty() && text::equalsNoCase(address.authority, host);
}

bool isOwnOrigin(std::string_view origin, const WireRequest& request, SiteScheme scheme) {
  const Address address(origin);
  return address.rest.empty() && isOwn(address, request, scheme);
}

std::string whyNot(const WireRequest& request) {
  std::string why = "nothing shows that a page of this site sent it";
  for (const std::string_view name : {"Sec-Fetch-Site", "Origin", "Referer", "Host"}) {
    const std::string_view value = request.header(name);
    if (!value.empty()) why += fmt::format(", {} {}", name, logText(value));
  }
  return why;
}

}  // namespace

bool hasEvidence(const WireRequest& request, SiteScheme scheme) {
  const std::string_view site = request.header("Sec-Fetch-Site");
  if (!site.empty()) return site == "same-origin";
  const std::string_view origin = request.header("Origin");
  if (!origin.empty()) return isOwnOrigin(origin, request, scheme);
  return isOwn(Address(request.header("Referer")), request, scheme);
}

bool isCrossSite(const WireRequest& request, SiteScheme scheme) {
  const std::string_view site = request.header("Sec-Fetch-Site");
  if (!site.empty()) return site != "same-origin" && site != "none";
  const std::string_view origin = request.header("Origin");
  return !origin.empty() && !isOwnOrigin(origin, request, scheme);
}

bool mayGoOn(Visit& visit, Purpose purpose, spdlog::logger& log) {
  const bool may = purpose == Purpose::Changes ? hasEvidence(visit.wire, visit.scheme())
                                               : !isCrossSite(visit.wire, visit.scheme());
  if (may) return true;
  refuse(visit, log, purpose == Purpose::Changes ? kNoEvidence : kCrossSite, whyNot(visit.wire));
  if (isApiPath(visit.path)) {
    visit.response.reset();
    writeApiError(visit, ApiError(403, "cross_site", "Nothing shows that this site sent it."));
  }
  return false;
}

}  // namespace tarlo::host
