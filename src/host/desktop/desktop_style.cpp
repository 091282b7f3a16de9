#include "host/desktop/desktop_style.h"

#include <array>

#include "host/desktop/desktop_data.h"
#include "variant/convert.h"

namespace tarlo::host {
namespace {

constexpr std::array<std::string_view, 4> kWords = {"sea", "olive", "orange", "sun"};

bool isStyle(std::string_view text) {
  return text.size() == 1 && text[0] >= '1' && text[0] <= '4';
}

}  // namespace

std::string_view takeStyle(Page& page) {
  std::string style = variant::spliced(page.request.value(kStyleCookie));
  if (isStyle(style)) {
    page.session.put("usrStyle", style);
  } else {
    style = variant::spliced(page.session.get("usrStyle"));
  }
  return isStyle(style) ? kWords[static_cast<std::size_t>(style[0] - '1')] : kWords[0];
}

}  // namespace tarlo::host
