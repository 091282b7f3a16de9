#pragma once
// Parts of page text.

#include <string>
#include <string_view>

namespace tarlo::testing {

inline bool holds(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// The text between two marks, the first of them included; "" when one is missing.
inline std::string between(const std::string& text, std::string_view from, std::string_view to) {
  const std::size_t begin = text.find(from);
  if (begin == std::string::npos) return "";
  const std::size_t end = text.find(to, begin + from.size());
  return end == std::string::npos ? "" : text.substr(begin, end - begin);
}

}  // namespace tarlo::testing
