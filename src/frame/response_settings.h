#pragma once
// What every framed page and dialog tells the browser before its text: a page shows the state of
// the database, so nothing on the way may keep a copy of it.

#include "frame/page.h"

namespace tarlo::frame {

void writeResponseSettings(Response& response);

}  // namespace tarlo::frame
