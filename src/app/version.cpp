#include "app/cli.h"

namespace tarlo::app {

std::string_view version() {
  return TARLO_VERSION;
}

}  // namespace tarlo::app
