#pragma once
// JSON answers to the browser side of a component: UTF-8 whatever code page the pages are sent in.

#include <string>

#include "frame/page.h"

namespace tarlo::siblings {

void sendJson(Page& page, const std::string& json);

}  // namespace tarlo::siblings
