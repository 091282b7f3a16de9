#include "text/utf8.h"

#include <algorithm>

namespace tarlo::text {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Bytes that the lead byte announces; 0 for a byte that leads nothing.
std::uint32_t announced(unsigned lead) {
  if (lead < 0xC2 || lead > 0xF4) return 0;
  if (lead < 0xE0) return 2;
  return lead < 0xF0 ? 3 : 4;
}

}  // namespace

Character characterBeyondAscii(std::string_view text) {
  const auto byteAt = [&](std::size_t i) -> unsigned {
    return static_cast<unsigned char>(text[i]);
  };
  const Character none{byteAt(0), 0};
  const std::uint32_t length = announced(none.point);
  if (length == 0 || length > text.size()) return none;
  char32_t point = none.point & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned tail = byteAt(i) ^ 0x80U;
    if (tail > 0x3F) return none;
    point = point << 6 | tail;
  }
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = point >= 0xD800 && point <= 0xDFFF;
  if (point < kLeast[length] || point > 0x10FFFF || isSurrogate) return none;
  return {point, length};
}

char32_t takeCodePoint(std::string_view& text) {
  const Character character = characterAt(text);
  text.remove_prefix(std::max(character.length, 1U));
  return character.length == 0 ? kReplacement : character.point;
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

std::size_t firstInvalidByte(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    if (beginsPlain(text.substr(i))) {
      i += 8;
      continue;
    }
    const std::size_t length = text[i] == '\0' ? 0 : utf8Length(text.substr(i));
    if (length == 0) return i;
    i += length;
  }
  return std::string_view::npos;
}

std::string_view utf8Prefix(std::string_view text, std::size_t characters) {
  std::string_view rest = text;
  while (characters-- > 0 && !rest.empty()) takeCodePoint(rest);
  return text.substr(0, text.size() - rest.size());
}

std::string_view wholeCharacters(std::string_view text, std::size_t bytes) {
  if (bytes >= text.size()) return text;
  while (bytes > 0 && isContinuation(text[bytes])) --bytes;
  return text.substr(0, bytes);
}

std::size_t utf16Length(std::string_view text) {
  return utf16Cut(text, SIZE_MAX).units;
}

Utf16Cut utf16Cut(std::string_view text, std::size_t units) {
  std::size_t byte = 0;
  std::size_t counted = 0;
  while (counted < units && byte < text.size()) {
    const std::string_view rest = text.substr(byte);
    if (units - counted >= 8 && beginsPlain(rest)) {
      byte += 8;
      counted += 8;
      continue;
    }
    const std::size_t length = std::max<std::size_t>(utf8Length(rest), 1);
    counted += length == 4 ? 2 : 1;
    if (counted > units) return {byte, byte + length, counted};
    byte += length;
  }
  return {byte, byte, counted};
}

}  // namespace tarlo::text
