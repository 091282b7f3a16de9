#pragma once
// Whether another site made the browser send a request. Browsers of today say so; the pages' own
// origin check looks at the referring address only.

#include "host/wire/message.h"

namespace tarlo::host {

// False for clients that say nothing: they are no browsers that somebody could lure.
bool isCrossSite(const WireRequest& request);

}  // namespace tarlo::host
