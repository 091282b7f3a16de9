#include "frame/oem_pane.h"

#include "embedded_frame_pages.h"
#include "frame/policy.h"
#include "frame/template.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::frame {
namespace {

constexpr std::string_view kPolicy = "OEM信息";

}  // namespace

std::string getOEMInfoHTML(Page& page) {
  const Variant rows = getPolicyRow(page, kPolicy);
  const Variant& value = rows.array().at(3, 0);
  // Values are text; the number stands for a policy that is not there.
  if (value.isNumber()) throw RuntimeError(ErrorNumber::InvalidCall, kPolicy);
  const std::string text = variant::toText(value);
  const std::string shown = text.substr(0, text.find(','));
  static const Template pane(embedded::frame_pages::find("oem_pane.html"));
  return pane.fill({{"text", text::replace(inPlace(Place::Text, shown), "\r\n", "<br>")}});
}

}  // namespace tarlo::frame
