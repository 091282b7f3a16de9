#pragma once
// Names without regard to case: A to Z are a to z, every other byte is itself. Operations, keys,
// headers, tables and columns are found this way; how statements compare the texts of rows is the
// engine's matter.

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
