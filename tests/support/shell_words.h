#pragma once
// The words of a command line.

#include <string>
#include <string_view>
#include <vector>

namespace tarlo::testing {

// Words as a shell parts them: quotes of both kinds, no escapes.
inline std::vector<std::string> shellWords(std::string_view line) {
  std::vector<std::string> words;
  bool isOpen = false;
  char quote = 0;
  for (const char c : line) {
    if (quote != 0 ? c == quote : c == '\'' || c == '"') {
      quote = quote == 0 ? c : '\0';
      if (!isOpen) words.emplace_back();
      isOpen = true;
    } else if (quote == 0 && c == ' ') {
      isOpen = false;
    } else {
      if (!isOpen) words.emplace_back();
      isOpen = true;
      words.back() += c;
    }
  }
  return words;
}

}  // namespace tarlo::testing
