#include "host/site/log_text.h"

#include <fmt/format.h>

namespace tarlo::host {

namespace {

bool isWithin(char c, unsigned first, unsigned last) {
  const unsigned byte = static_cast<unsigned char>(c);
  return byte >= first && byte <= last;
}

// How many bytes at the text's front would break the line or turn it round for whoever reads the
// log: control characters, Unicode's line ends and its marks of direction.
std::size_t lengthOfControl(std::string_view text) {
  if (isWithin(text[0], 0, 0x1F) || text[0] == '\x7F') return 1;
  if (text.size() > 1 && text[0] == '\xC2' && isWithin(text[1], 0x80, 0x9F)) return 2;
  if (text.size() < 3 || text[0] != '\xE2') return 0;
  const bool isMark = text[1] == '\x80' && (isWithin(text[2], 0x8E, 0x8F) ||  // U+200E, U+200F
                                            isWithin(text[2], 0xA8, 0xAE));   // U+2028 to U+202E
  const bool isIsolate = text[1] == '\x81' && isWithin(text[2], 0xA6, 0xA9);  // U+2066 to U+2069
  return isMark || isIsolate ? 3 : 0;
}

}  // namespace

std::string logText(std::string_view text) {
  std::string line = "\"";
  std::string_view rest = text.substr(0, kMostLogText);
  while (!rest.empty()) {
    const std::size_t control = lengthOfControl(rest);
    for (const char c : rest.substr(0, control)) {
      line += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
    }
    if (control == 0) {
      if (rest[0] == '"' || rest[0] == '\\') line += '\\';
      line += rest[0];
    }
    rest.remove_prefix(control == 0 ? 1 : control);
  }
  if (text.size() > kMostLogText) line += "...";
  return line += '"';
}

}  // namespace tarlo::host
