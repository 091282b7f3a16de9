#include "text/utf8.h"

namespace tarlo::text {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

unsigned char byteAt(std::string_view text, std::size_t i) {
  return static_cast<unsigned char>(text[i]);
}

// Bytes that the lead byte announces; 0 for a byte that leads nothing.
std::size_t announced(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  if (lead < 0xE0) return 2;
  return lead < 0xF0 ? 3 : 4;
}

}  // namespace

std::size_t utf8Length(std::string_view text) {
  const unsigned char lead = byteAt(text, 0);
  const std::size_t length = announced(lead);
  if (length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(text, i) & 0xC0) != 0x80) return 0;
  }
  if (length < 3) return length;
  const unsigned char second = byteAt(text, 1);
  const bool outside = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                       (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
  return outside ? 0 : length;
}

char32_t takeCodePoint(std::string_view& text) {
  const std::size_t length = utf8Length(text);
  char32_t point = kReplacement;
  if (length == 1) {
    point = byteAt(text, 0);
  } else if (length > 1) {
    point = byteAt(text, 0) & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) point = point << 6 | (byteAt(text, i) & 0x3Fu);
  }
  text.remove_prefix(length == 0 ? 1 : length);
  return point;
}

void appendUtf8(std::string& text, char32_t point) {
  const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
  if (point < 0x80) return put(point);
  if (point < 0x800) {
    put(0xC0 | point >> 6);
  } else {
    if (point < 0x10000) {
      put(0xE0 | point >> 12);
    } else {
      put(0xF0 | point >> 18);
      put(0x80 | (point >> 12 & 0x3F));
    }
    put(0x80 | (point >> 6 & 0x3F));
  }
  put(0x80 | (point & 0x3F));
}

}  // namespace tarlo::text
