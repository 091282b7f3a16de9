#include "host/site/cross_site.h"

#include "variant/text.h"

namespace tarlo::host {

bool isCrossSite(const WireRequest& request) {
  const std::string_view site = request.header("Sec-Fetch-Site");
  if (!site.empty()) return site != "same-origin" && site != "none";
  const std::string_view origin = request.header("Origin");
  if (origin.empty()) return false;
  const auto scheme = origin.find("://");
  // Without a scheme it is "null": a page whose origin the browser hides.
  if (scheme == std::string_view::npos) return true;
  return !variant::equalsNoCase(origin.substr(scheme + 3), request.header("Host"));
}

}  // namespace tarlo::host
