#include "frame/response_settings.h"

namespace tarlo::frame {

void writeResponseSettings(Response& response) {
  response.setHeader("Expires", "0");
  response.setHeader("Cache-Control", "no-cache");
  response.setHeader("Pragma", "No-Cache");
  response.setHeader("robots", "noindex,follow");
}

}  // namespace tarlo::frame
