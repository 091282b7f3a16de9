#include "database/sqlite/text_fold.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "text/fold.h"

namespace tarlo::database {
namespace {

// Capital letters first, first + stride, ... up to last; the small one is `delta` further. From
// Unicode's CaseFolding table (simple folding), the alphabets in everyday use.
struct CaseRange {
  char32_t first, last;
  unsigned stride;
  std::int32_t delta;
};
constexpr CaseRange kCaseRanges[] = {
    {0x0041, 0x005A, 1, 32}, {0x00C0, 0x00D6, 1, 32},   {0x00D8, 0x00DE, 1, 32},
    {0x0100, 0x012E, 2, 1},  {0x0132, 0x0136, 2, 1},    {0x0139, 0x0147, 2, 1},
    {0x014A, 0x0176, 2, 1},  {0x0178, 0x0178, 1, -121}, {0x0179, 0x017D, 2, 1},
    {0x01CD, 0x01DB, 2, 1},  {0x01DE, 0x01EE, 2, 1},    {0x01F8, 0x021E, 2, 1},
    {0x0222, 0x0232, 2, 1},  {0x0386, 0x0386, 1, 38},   {0x0388, 0x038A, 1, 37},
    {0x038C, 0x038C, 1, 64}, {0x038E, 0x038F, 1, 63},   {0x0391, 0x03A1, 1, 32},
    {0x03A3, 0x03AB, 1, 32}, {0x0400, 0x040F, 1, 80},   {0x0410, 0x042F, 1, 32},
    {0x0460, 0x0480, 2, 1},  {0x048A, 0x04BE, 2, 1},    {0x04C0, 0x04C0, 1, 15},
    {0x04C1, 0x04CD, 2, 1},  {0x04D0, 0x052E, 2, 1},    {0x0531, 0x0556, 1, 48},
    {0x1E00, 0x1E94, 2, 1},  {0x1EA0, 0x1EFE, 2, 1},    {0x2160, 0x216F, 1, 16},
    {0x24B6, 0x24CF, 1, 26}, {0xFF21, 0xFF3A, 1, 32},   {0x10400, 0x10427, 1, 40},
};

// Letters that fold to another small letter without being its capital.
struct OneWay {
  char32_t from, to;
};
constexpr OneWay kOneWay[] = {{0x00B5, 0x03BC}, {0x017F, 0x0073}, {0x03C2, 0x03C3},
                              {0x03D0, 0x03B2}, {0x03D1, 0x03B8}, {0x03D5, 0x03C6},
                              {0x03D6, 0x03C0}, {0x1E9B, 0x1E61}, {0x1E9E, 0x00DF}};

// U+FF61 to U+FF9F, half-width marks and Katakana, in their usual width.
constexpr char32_t kKatakana[] =
    U"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホ"
    U"マミムメモヤユヨ"
    U"ラリルレロワン゛゜";
static_assert(std::size(kKatakana) == 0xFF9F - 0xFF61 + 2);

char32_t usualWidth(char32_t c) {
  if (c == 0x3000) return ' ';
  if (c >= 0xFF01 && c <= 0xFF5E) return c - 0xFEE0;
  if (c >= 0xFF61 && c <= 0xFF9F) return kKatakana[c - 0xFF61];
  if (c == 0xFFE0 || c == 0xFFE1) return c - 0xFFE0 + 0xA2;
  if (c == 0xFFE5) return 0xA5;
  return c;
}

}  // namespace

char32_t lowerCharacter(char32_t c) {
  if (c < 0x80) return static_cast<unsigned char>(text::folded(static_cast<char>(c)));
  for (const CaseRange& range : kCaseRanges) {
    if (c < range.first || c > range.last) continue;
    if ((c - range.first) % range.stride == 0) return c + static_cast<char32_t>(range.delta);
  }
  return c;
}

char32_t upperCharacter(char32_t c) {
  if (c < 0x80) return static_cast<unsigned char>(text::raised(static_cast<char>(c)));
  for (const CaseRange& range : kCaseRanges) {
    const char32_t capital = c - static_cast<char32_t>(range.delta);
    if (capital < range.first || capital > range.last) continue;
    if ((capital - range.first) % range.stride == 0) return capital;
  }
  return c;
}

char32_t foldCharacter(char32_t c) {
  // Ideographs have neither case nor width, and most text here is made of them.
  if (c >= 0x3400 && c <= 0x9FFF) return c;
  if (c < 0x80) return lowerCharacter(c);
  c = usualWidth(c);
  for (const OneWay& entry : kOneWay) {
    if (c == entry.from) return entry.to;
  }
  return lowerCharacter(c);
}

std::u32string foldText(std::string_view text) {
  std::u32string folded;
  folded.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    folded.push_back(foldCharacter(decodeCharacter(text, at)));
  }
  return folded;
}

int compareFolded(std::string_view a, std::string_view b) {
  // The shorter text counts as filled with blanks, which is how trailing blanks drop out.
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() || j < b.size()) {
    const char32_t x = i < a.size() ? foldCharacter(decodeCharacter(a, i)) : U' ';
    const char32_t y = j < b.size() ? foldCharacter(decodeCharacter(b, j)) : U' ';
    if (x != y) return x < y ? -1 : 1;
  }
  return 0;
}

std::string encodeText(std::u32string_view characters) {
  std::string text;
  text.reserve(characters.size());
  for (const char32_t c : characters) {
    if (c < kNoCharacter) {
      text::appendUtf8(text, c);
    } else {
      text += static_cast<char>(c - kNoCharacter);
    }
  }
  return text;
}

}  // namespace tarlo::database
