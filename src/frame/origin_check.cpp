#include "frame/helpers.h"
#include "frame/place.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/text.h"

namespace tarlo::frame {
namespace {

// The \n are for the script's string, not line ends of the page.
constexpr std::string_view kRefusalBefore = "<script>alert('无法识别的访问来源!请用\\n\\n";
constexpr std::string_view kRefusalAfter =
    "\\n\\n地址登录到本系统!');top.close();</script><p>非法请求，请用正常途径访问!";

bool mayComeFromAnywhere(const Request& request) {
  const Variant action = request.value("action");
  if (variant::equals(action, "") || variant::equals(action, "TarloLogin")) return true;
  return variant::equals(request.value("k7wwworvane"), 1) &&
         variant::equals(request.value("cmdid"), "");
}

}  // namespace

Variant isValidConnect(Page& page) {
  const std::string referer = variant::spliced(page.request.serverVariable("HTTP_REFERER"));
  const std::string keyword = variant::spliced(page.application.get("virtualWebKeyWord"));
  const std::size_t position = variant::inStr(referer, keyword);
  // One character may stand before the site's address. Without a keyword every referer passes.
  if (position > 0 && position < 3) return true;
  if (mayComeFromAnywhere(page.request)) return true;
  page.response.write(
      std::string(kRefusalBefore).append(inPlace(Place::Script, keyword)).append(kRefusalAfter));
  return false;
}

}  // namespace tarlo::frame
