#include "text/display_width.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "text/utf8.h"

namespace tarlo::text {
namespace {

struct Range {
  char32_t first, last;
};

// Combining marks of the scripts that business data holds.
constexpr std::array<Range, 9> kZeroWidth = {{{0x300, 0x36F},
                                              {0x483, 0x489},
                                              {0x591, 0x5BD},
                                              {0x64B, 0x65F},
                                              {0xE31, 0xE31},
                                              {0xE34, 0xE3A},
                                              {0x20D0, 0x20FF},
                                              {0xFE00, 0xFE0F},
                                              {0xFE20, 0xFE2F}}};

constexpr std::array<Range, 13> kWide = {{{0x1100, 0x115F},
                                          {0x2E80, 0x303E},
                                          {0x3041, 0x33FF},
                                          {0x3400, 0x4DBF},
                                          {0x4E00, 0x9FFF},
                                          {0xA000, 0xA4CF},
                                          {0xAC00, 0xD7A3},
                                          {0xF900, 0xFAFF},
                                          {0xFE30, 0xFE6F},
                                          {0xFF00, 0xFF60},
                                          {0xFFE0, 0xFFE6},
                                          {0x1F300, 0x1FAFF},
                                          {0x20000, 0x3FFFD}}};

// Controls, and the characters that turn the direction of text or cannot be seen.
constexpr std::array<Range, 8> kInvisible = {{{0x0, 0x1F},
                                              {0x7F, 0x9F},
                                              {0xAD, 0xAD},
                                              {0x200B, 0x200F},
                                              {0x2028, 0x202E},
                                              {0x2060, 0x206F},
                                              {0xFEFF, 0xFEFF},
                                              {0xE0000, 0xE0FFF}}};

template <std::size_t N>
bool contains(const std::array<Range, N>& ranges, char32_t c) {
  return std::any_of(ranges.begin(), ranges.end(),
                     [c](Range range) { return c >= range.first && c <= range.last; });
}

// What was taken off the front of a text; a byte that is not UTF-8 is its own value.
struct Taken {
  char32_t value;
  std::string_view bytes;
  bool isCharacter;
};

Taken take(std::string_view& text) {
  const Character character = characterAt(text);
  const bool isCharacter = character.length > 0;
  const std::string_view bytes = text.substr(0, isCharacter ? character.length : 1);
  text.remove_prefix(bytes.size());
  return {character.point, bytes, isCharacter};
}

void appendVisible(std::string& out, const Taken& taken) {
  if (!taken.isCharacter) {
    fmt::format_to(std::back_inserter(out), "\\x{:02x}", static_cast<unsigned>(taken.value));
  } else if (taken.value == '\n') {
    out += "\\n";
  } else if (taken.value == '\r') {
    out += "\\r";
  } else if (taken.value == '\t') {
    out += "\\t";
  } else if (contains(kInvisible, taken.value)) {
    fmt::format_to(std::back_inserter(out), "\\u{{{:x}}}", static_cast<unsigned>(taken.value));
  } else {
    out += taken.bytes;
  }
}

}  // namespace

int columnsOf(char32_t c) {
  if (c < 0x300) return 1;
  if (contains(kZeroWidth, c)) return 0;
  return contains(kWide, c) ? 2 : 1;
}

std::size_t displayWidth(std::string_view text) {
  std::size_t width = 0;
  while (!text.empty()) width += static_cast<std::size_t>(columnsOf(take(text).value));
  return width;
}

std::string cutTo(std::string_view text, std::size_t width) {
  if (displayWidth(text) <= width) return std::string(text);
  constexpr std::string_view kMore = "…";
  std::string cut;
  std::size_t used = 1;  // the mark's
  while (!text.empty()) {
    const Taken taken = take(text);
    used += static_cast<std::size_t>(columnsOf(taken.value));
    if (used > width) break;
    cut += taken.bytes;
  }
  return cut.append(kMore);
}

std::string visible(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) appendVisible(out, take(text));
  return out;
}

}  // namespace tarlo::text
