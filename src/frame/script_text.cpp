#include "frame/script_text.h"

namespace tarlo::frame {

std::string scriptText(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size() + 2);
  for (const char c : text) {
    switch (c) {
      case '\\':
      case '\'':
      case '"':
        escaped.append(1, '\\').append(1, c);
        break;
      case '\r':
        escaped += "\\r";
        break;
      case '\n':
        escaped += "\\n";
        break;
      case '<':  // no "</script" and no "<!--"
        escaped += "\\x3c";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

}  // namespace tarlo::frame
