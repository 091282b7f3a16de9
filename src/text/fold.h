#pragma once
// Names without regard to case: A to Z are a to z, every other byte is itself. Operations, keys,
// headers, tables and columns are found this way; how statements compare the texts of rows is the
// engine's matter. And the classes of such bytes, whatever the locale.

#include <algorithm>
#include <string>
#include <string_view>

namespace tarlo::text {

constexpr char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char raised(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool isLetter(char c) {
  return folded(c) >= 'a' && folded(c) <= 'z';
}
constexpr bool isLetterOrDigit(char c) {
  return isLetter(c) || isDigit(c);
}
// The value of a hexadecimal digit, -1 for any other byte.
constexpr int hexDigit(char c) {
  if (isDigit(c)) return c - '0';
  return folded(c) >= 'a' && folded(c) <= 'f' ? folded(c) - 'a' + 10 : -1;
}

constexpr bool equalsNoCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, folded, folded);
}

constexpr bool precedesNoCase(std::string_view a, std::string_view b) {
  return std::ranges::lexicographical_compare(a, b, {}, folded, folded);
}

inline std::string foldedName(std::string_view name) {
  std::string result(name);
  std::ranges::transform(result, result.begin(), folded);
  return result;
}
inline std::string upperName(std::string_view name) {
  std::string result(name);
  std::ranges::transform(result, result.begin(), raised);
  return result;
}

// For maps by name: std::map<std::string, Value, text::NoCaseLess>.
struct NoCaseLess {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return precedesNoCase(a, b); }
};

}  // namespace tarlo::text
