#include "services/div_dialog.h"

#include "embedded_services_pages.h"
#include "frame/helpers.h"
#include "frame/template.h"
#include "variant/convert.h"

namespace tarlo::services {
namespace {

using frame::Template;
using variant::spliced;

// The box's inner size, in the 16-bit arithmetic of the page's language.
std::string reduced(const Variant& size, int by) {
  const int inner = variant::toInt16(size) - by;
  if (inner < INT16_MIN) throw RuntimeError(ErrorNumber::Overflow, "the dialog's size");
  return std::to_string(inner);
}

std::string buttons(Page& page, const std::string& id, const Variant& given) {
  if (!variant::toBoolean(frame::isNothing(page, given))) {
    return "<div id=winBtnID>" + spliced(given) + "</div>\r\n";
  }
  static const Template standard(embedded::services_pages::find("div_dialog_buttons.html"));
  return standard.fill({{"id", id}});
}

}  // namespace

Variant TarloDivDialog(Page& page, const Variant& id, const Variant& WinTitle,
                       const Variant& TopicTitle, const Variant& WinWidth, const Variant& WinHeight,
                       const Variant& WinBody, const Variant& WinButon) {
  static const Template head(embedded::services_pages::find("div_dialog_head.html"));
  static const Template body(embedded::services_pages::find("div_dialog_body.html"));
  static const Template foot(embedded::services_pages::find("div_dialog_foot.html"));
  const std::string name = spliced(id);
  const std::string width = spliced(WinWidth);
  const std::string height = spliced(WinHeight);
  head.write(page.response, {{"id", name}, {"width", width}, {"height", height}});
  body.write(page.response, {{"id", name},
                             {"innerWidth", reduced(WinWidth, 1)},
                             {"innerHeight", reduced(WinHeight, 5)},
                             {"title", spliced(WinTitle)},
                             {"topic", spliced(TopicTitle)},
                             {"body", spliced(WinBody)}});
  page.response.write(buttons(page, name, WinButon));
  foot.write(page.response, {{"id", name}, {"width", width}, {"height", height}});
  return {};
}

}  // namespace tarlo::services
