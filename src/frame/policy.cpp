#include "frame/policy.h"

#include "embedded_frame_pages.h"
#include "frame/data.h"
#include "frame/page_text.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::frame {
namespace {

constexpr std::string_view kInstallation = "OEM信息";

Rows policyRows(Page& page, std::string_view name) {
  constexpr std::string_view kValues =
      "select  Policy_ParaA,Policy_ParaB,Policy_ParaC,Policy_ParaD,Policy_ParaE,Policy_ParaF"
      " From Zembra_Policy Where Policy_Name = '";
  return rows(page, text::joined({kValues, name, "'"}));
}

}  // namespace

std::optional<Variant> policyValue(Page& page, std::string_view name, PolicyValue value) {
  const Rows found = policyRows(page, name);
  if (found.empty()) return {};
  return found.front().value(static_cast<std::size_t>(value));
}

Variant policyTable(Page& page, std::string_view name) {
  const Rows found = policyRows(page, name);
  if (!found.empty()) return found.table();
  Array absent({10, 1});
  for (std::ptrdiff_t value = 0; value <= 8; ++value) absent.at(value, 0) = 0;
  return absent;
}

std::string getOEMInfoHTML(Page& page) {
  const std::optional<Variant> value = policyValue(page, kInstallation, PolicyValue::D);
  if (!value) throw RuntimeError(ErrorNumber::InvalidCall, kInstallation);
  const std::string text = variant::toText(*value);
  const std::string shown = text.substr(0, text.find(','));
  static const PageText pane(embedded::frame_pages::find("oem_pane.html"));
  return pane.fill({{"text", text::replace(inPlace(Place::Text, shown), "\r\n", "<br>")}});
}

}  // namespace tarlo::frame
