#pragma once
// Names match without regard to the case of ASCII letters, everywhere in a statement.

#include <algorithm>
#include <string>
#include <string_view>

namespace tarlo::tsql {

constexpr char upperAscii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

inline bool sameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return upperAscii(x) == upperAscii(y); });
}

inline std::string upperName(std::string_view name) {
  std::string upper(name);
  std::transform(upper.begin(), upper.end(), upper.begin(), upperAscii);
  return upper;
}

}  // namespace tarlo::tsql
