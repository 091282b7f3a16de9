#pragma once
// Controls and schemes as JSON.

#include <cstdint>

#include "control/control.h"
#include "frame/page.h"
#include "host/api/json_value.h"

namespace tarlo::host {

// Runs the control's statement once. Raises DatabaseError.
Json describe(Page& page, const control::Control& control);

// A scheme that is not deleted, with its columns. Throws ApiError 404; raises DatabaseError.
Json describeScheme(Page& page, std::int64_t id);

}  // namespace tarlo::host
