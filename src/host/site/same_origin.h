#pragma once
// Whether a page of this site sent a request. A browser sends the session's cookie with whatever
// another site makes it ask for, so a request that changes something has to show where it comes
// from. The pages' own origin check runs beside this one: it looks at the beginning of an address,
// and lets some requests pass that name none.

#include <spdlog/logger.h>

#include <string_view>

#include "host/site/visit.h"

namespace tarlo::host {

// The first of these that is there decides: Sec-Fetch-Site says "same-origin"; Origin is the scheme
// and `Host`; the host and port of Referer are `Host`. None of them is no evidence: such a request
// may be a link on another site, followed by a browser that says nothing.
bool hasEvidence(const WireRequest& request, SiteScheme scheme);

// Whether the browser says that another site caused the request. False where it says nothing, and
// for what the user typed or kept as a bookmark.
bool isCrossSite(const WireRequest& request, SiteScheme scheme);

// What the request wants to do. Reading goes on unless another site caused it.
enum class Purpose { Reads, Changes };
// A request that may not go on has been answered and logged when this is false.
bool mayGoOn(Visit& visit, Purpose purpose, spdlog::logger& log);

}  // namespace tarlo::host
