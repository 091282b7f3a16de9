#include "frame/script_text.h"

namespace tarlo::frame {

std::string scriptText(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size() + text.size() / 8 + 2);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const char next = i + 1 < text.size() ? text[i + 1] : '\0';
    if (c == '\\' || c == '\'' || c == '"') {
      escaped.append(1, '\\').append(1, c);
    } else if (c == '\r') {
      escaped += "\\r";
    } else if (c == '\n') {
      escaped += "\\n";
    } else if (c == '<' && (next == '/' || next == '!')) {
      escaped += "\\x3c";  // neither the end of the script element nor the start of a comment
    } else {
      escaped += c;
    }
  }
  return escaped;
}

}  // namespace tarlo::frame
