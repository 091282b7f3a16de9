#include "scheme/preview_extras.h"

namespace tarlo::scheme {

std::string firstRows(Page&, const std::string&) {
  return "";
}

std::string refusalReason(Page&, const compile::Definition&, const std::string&) {
  return "";
}

}  // namespace tarlo::scheme
