#include "text/utf8.h"

#include <algorithm>
#include <cstring>

namespace tarlo::text {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// The low bits of the byte at `i`; above 0x3F where that continues no character.
unsigned tailAt(std::string_view text, std::size_t i) {
  return static_cast<unsigned char>(text[i]) ^ 0x80U;
}

// The reading itself, for the loops below too: a call for each character would be felt.
inline Character readBeyondAscii(std::string_view text) {
  const unsigned lead = static_cast<unsigned char>(text.front());
  const Character none{lead, 0};
  if (lead < 0xC2 || lead > 0xF4 || text.size() < 2) return none;
  const unsigned second = tailAt(text, 1);
  if (second > 0x3F) return none;
  if (lead < 0xE0) return {(lead & 0x1F) << 6 | second, 2};
  if (text.size() < 3) return none;
  const unsigned third = tailAt(text, 2);
  if (third > 0x3F) return none;
  if (lead < 0xF0) {
    const char32_t point = (lead & 0x0F) << 12 | second << 6 | third;
    const bool isSurrogate = point >= 0xD800 && point <= 0xDFFF;
    return point < 0x800 || isSurrogate ? none : Character{point, 3};
  }
  if (text.size() < 4) return none;
  const unsigned fourth = tailAt(text, 3);
  const char32_t point = (lead & 0x07) << 18 | second << 12 | third << 6 | fourth;
  return fourth > 0x3F || point < 0x10000 || point > 0x10FFFF ? none : Character{point, 4};
}

std::size_t lengthAt(std::string_view text) {
  return text.front() >= 0 ? 1 : readBeyondAscii(text).length;
}

// Bytes at the front that are ASCII and not NUL, in steps of eight: statements and pages are mostly
// that.
std::size_t plainRun(std::string_view text) {
  std::size_t run = 0;
  for (; text.size() - run >= 8; run += 8) {
    std::uint64_t word;
    std::memcpy(&word, text.data() + run, sizeof word);
    if ((((word - 0x0101010101010101U) | word) & 0x8080808080808080U) != 0) break;
  }
  return run;
}

}  // namespace

Character characterBeyondAscii(std::string_view text) {
  return readBeyondAscii(text);
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
  std::string_view rest = text;
  for (;;) {
    rest.remove_prefix(plainRun(rest));
    if (rest.empty()) return std::string_view::npos;
    const std::size_t length = rest.front() == '\0' ? 0 : lengthAt(rest);
    if (length == 0) return text.size() - rest.size();
    rest.remove_prefix(length);
  }
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
  std::string_view rest = text;
  std::size_t counted = 0;
  for (;;) {
    const std::size_t run = plainRun(rest.substr(0, units - counted));
    rest.remove_prefix(run);
    counted += run;
    const std::size_t byte = text.size() - rest.size();
    if (counted == units || rest.empty()) return {byte, byte, counted};
    const std::size_t length = std::max<std::size_t>(lengthAt(rest), 1);
    counted += length == 4 ? 2 : 1;
    if (counted > units) return {byte, byte + length, counted};
    rest.remove_prefix(length);
  }
}

}  // namespace tarlo::text
