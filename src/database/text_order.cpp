#include "database/text_order.h"

#include <unicode/ucol.h>

#include <cstdint>
#include <memory>
#include <stdexcept>

#include "database/sqlite/text_fold.h"

namespace tarlo::database {
namespace {

struct CloseCollator {
  void operator()(UCollator* collator) const { ucol_close(collator); }
};

// The length that the key needs; it is written where it fits.
int keyOf(const UCollator& collator, std::u16string_view text, char* key, int room) {
  return ucol_getSortKey(&collator, text.data(), static_cast<int>(text.size()),
                         reinterpret_cast<std::uint8_t*>(key), room);
}

// Texts of ASCII letters, digits and blanks: such a character is one byte of the key, whatever
// stands beside it, and behind them stands what depends on their count alone. Both are asked of
// the collator once.
class PlainKeys {
 public:
  static constexpr std::size_t kMost = 64;  // characters

  explicit PlainKeys(const UCollator& collator) {
    constexpr std::u16string_view kPlain =
        u" 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    std::array<char, 2 * kMost> key{};
    for (const char16_t c : kPlain) {
      keyOf(collator, {&c, 1}, key.data(), key.size());
      weights_[c] = key[0];
    }
    const std::u16string letters(kMost, u'a');
    for (std::size_t count = 1; count <= kMost; ++count) {
      const int size = keyOf(collator, {letters.data(), count}, key.data(), key.size());
      // Without the zero byte at its end.
      endings_[count].assign(key.data() + count, static_cast<std::size_t>(size) - count - 1);
    }
  }

  // The length of the key, 0 for another text.
  std::size_t write(std::string_view text, char* key) const {
    if (text.empty() || text.size() > kMost) return 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const auto byte = static_cast<unsigned char>(text[i]);
      if (byte >= weights_.size() || weights_[byte] == 0) return 0;
      key[i] = weights_[byte];
    }
    const std::string& ending = endings_[text.size()];
    ending.copy(key + text.size(), ending.size());
    return text.size() + ending.size();
  }

 private:
  std::array<char, 128> weights_{};
  std::array<std::string, kMost + 1> endings_;
};

struct Order {
  std::unique_ptr<UCollator, CloseCollator> collator;
  PlainKeys plain;
};

Order openOrder() {
  UErrorCode error = U_ZERO_ERROR;
  std::unique_ptr<UCollator, CloseCollator> collator(
      ucol_open("zh-u-kr-latn-hani-ks-level2", &error));
  // A library without Chinese would order by its root, silently.
  if (error != U_ZERO_ERROR) {
    throw std::runtime_error(std::string("no Chinese order of texts: ") + u_errorName(error));
  }
  PlainKeys plain(*collator);
  return {std::move(collator), std::move(plain)};
}

// Opened by the first text that is ordered. Many threads may ask it.
const Order& order() {
  static const Order opened = openOrder();
  return opened;
}

std::string_view withoutBlanks(std::string_view text) {
  constexpr std::string_view kWideBlank = "\xE3\x80\x80";
  for (;;) {
    if (text.ends_with(' ')) {
      text.remove_suffix(1);
    } else if (text.ends_with(kWideBlank)) {
      text.remove_suffix(kWideBlank.size());
    } else {
      return text;
    }
  }
}

// In UTF-16, no longer than the text. Folded, because there are letters that equality takes for
// another and the collator does not, as the long s.
std::size_t foldInto(char16_t* units, std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size();) {
    char32_t c = foldCharacter(decodeCharacter(text, at));
    if (c >= kNoCharacter) c = 0xFFFD;
    if (c > 0xFFFF) units[count++] = static_cast<char16_t>(0xD7C0 + (c >> 10));
    units[count++] = static_cast<char16_t>(c > 0xFFFF ? 0xDC00 + (c & 0x3FF) : c);
  }
  return count;
}

}  // namespace

SortKey::SortKey(std::string_view text) {
  static_assert(std::tuple_size_v<decltype(short_)> >= 2 * PlainKeys::kMost);
  text = withoutBlanks(text);
  const Order& chinese = order();
  if (const std::size_t size = chinese.plain.write(text, short_.data())) {
    bytes_ = {short_.data(), size};
    return;
  }
  std::array<char16_t, 128> shortUnits;
  std::u16string longUnits(text.size() > shortUnits.size() ? text.size() : 0, u'\0');
  char16_t* units = longUnits.empty() ? shortUnits.data() : longUnits.data();
  const std::u16string_view folded(units, foldInto(units, text));
  char* key = short_.data();
  int size = keyOf(*chinese.collator, folded, key, static_cast<int>(short_.size()));
  if (size > static_cast<int>(short_.size())) {
    long_.resize(static_cast<std::size_t>(size));
    key = long_.data();
    size = keyOf(*chinese.collator, folded, key, size);
  }
  if (size < 1) throw std::runtime_error("a text has no place in the order");
  bytes_ = {key, static_cast<std::size_t>(size) - 1};
}

}  // namespace tarlo::database
