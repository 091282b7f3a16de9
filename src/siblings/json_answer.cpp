#include "siblings/json_answer.h"

namespace tarlo::siblings {

// As bytes, since text would be encoded like a page.
void sendJson(Page& page, const std::string& json) {
  page.response.setHeader("Content-Type", "application/json; charset=utf-8");
  page.response.setHeader("Cache-Control", "no-store");
  page.response.binaryWrite(json);
}

}  // namespace tarlo::siblings
