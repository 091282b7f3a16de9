#pragma once
// The order of texts: digits, Latin letters, then Chinese by pinyin, as the collation tarlo.chinese
// of schema/postgresql.sql has it. Case, the width of a character and blanks at the end do not
// decide: texts that fold to the same have the same key.

#include <array>
#include <string>
#include <string_view>

namespace tarlo::database {

// Bytes that compare as the texts do; of two keys, one of which begins the other, the shorter comes
// first. They hold for one version of the library behind them, so they are not for keeping.
class SortKey {
 public:
  // Bytes that are not UTF-8 count as U+FFFD. Throws std::runtime_error when there is no such
  // order.
  explicit SortKey(std::string_view text);
  SortKey(const SortKey&) = delete;
  SortKey& operator=(const SortKey&) = delete;

  std::string_view bytes() const { return bytes_; }

 private:
  std::array<char, 256> short_;
  std::string long_;  // of a key that the array does not hold
  std::string_view bytes_;
};

}  // namespace tarlo::database
