#include "frame/oem_pane.h"

#include "frame/policy.h"
#include "frame/template.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/text.h"

namespace tarlo::frame {
namespace {

constexpr std::string_view kPane =
    R"html(<table width="100%" border="0" align="center" cellpadding="4" cellspacing="0">
  <tr>
    <td><span style="font-family: Tahoma; font-size: 9px; font-weight: bold;">Tarlo <font color="#FF7939">e</font>-business solutions</span><br>
      <hr size="1" color="#cccccc"> </td>
  </tr>
  <tr>
    <td height="60" id=person style="line-height: 200%; word-spacing: 1px; padding:8;">{{text}}</td>
  </tr>
  <tr>
    <td><hr size="1" color="#cccccc"></td>
  </tr>
  <tr>
    <td><img src="/uploads/oemimage/Zembrax_index_left_define_1.gif" width="126" height="57"></td>
  </tr>
</table>
)html";
constexpr std::string_view kPolicy = "OEM信息";

}  // namespace

std::string getOEMInfoHTML(Page& page) {
  const Variant rows = getPolicyRow(page, kPolicy);
  const Variant& value = rows.array().at(3, 0);
  // Values are text; the number stands for a policy that is not there.
  if (value.isNumber()) throw RuntimeError(ErrorNumber::InvalidCall, kPolicy);
  const std::string text = variant::toText(value);
  const std::string shown = text.substr(0, text.find(','));
  static const Template pane(kPane);
  return pane.fill({{"text", variant::replace(shown, "\r\n", "<br>")}});
}

}  // namespace tarlo::frame
