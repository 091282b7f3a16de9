#include "scheme/wizard_extras.h"

#include "variant/convert.h"

namespace tarlo::scheme {

bool hasExtras(Page& page) {
  const Variant setting = page.application.get("designerExtras");
  return setting.isEmpty() || variant::toBoolean(setting);
}

std::string wizardExtras(Page&, const Variant&) {
  return "";
}

}  // namespace tarlo::scheme
