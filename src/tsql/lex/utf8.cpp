#include "tsql/lex/utf8.h"

#include <cstdint>
#include <cstring>

namespace tarlo::tsql {
namespace {

constexpr std::uint64_t kHighBits = 0x8080808080808080u;
constexpr std::uint64_t kOnes = 0x0101010101010101u;

// Eight bytes at once: none above 0x7F, none zero.
bool isPlainWord(const char* p) {
  std::uint64_t word;
  std::memcpy(&word, p, sizeof word);
  return (((word - kOnes) | word) & kHighBits) == 0;
}

// Length of the character at `p`, 0 when there is none.
std::size_t characterLength(const unsigned char* p, std::size_t left) {
  const unsigned lead = p[0];
  if (lead < 0x80) return lead == 0 ? 0 : 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || length > left) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((p[i] & 0xC0) != 0x80) return 0;
  }
  const unsigned second = p[1];
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool surrogate = lead == 0xED && second > 0x9F;
  const bool beyond = lead == 0xF4 && second > 0x8F;
  return overlong || surrogate || beyond ? 0 : length;
}

}  // namespace

std::size_t firstInvalidByte(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    if (text.size() - i >= 8 && isPlainWord(text.data() + i)) {
      i += 8;
      continue;
    }
    const auto* p = reinterpret_cast<const unsigned char*>(text.data() + i);
    const std::size_t length = characterLength(p, text.size() - i);
    if (length == 0) return i;
    i += length;
  }
  return std::string_view::npos;
}

std::size_t utf16Length(std::string_view text) {
  std::size_t units = 0;
  for (const char c : text) {
    if (isContinuation(c)) continue;
    units += static_cast<unsigned char>(c) >= 0xF0 ? 2 : 1;
  }
  return units;
}

std::string_view utf8Prefix(std::string_view text, std::size_t characters) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isContinuation(text[i])) continue;
    if (characters-- == 0) return text.substr(0, i);
  }
  return text;
}

}  // namespace tarlo::tsql
