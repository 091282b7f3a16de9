#include "host/site/log_text.h"

#include <fmt/format.h>

namespace tarlo::host {

std::string logText(std::string_view text) {
  std::string line = "\"";
  for (const char c : text.substr(0, kMostLogText)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F) {
      line += fmt::format("\\x{:02x}", byte);
    } else {
      if (c == '"' || c == '\\') line += '\\';
      line += c;
    }
  }
  if (text.size() > kMostLogText) line += "...";
  return line += '"';
}

}  // namespace tarlo::host
