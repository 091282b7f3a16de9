#pragma once
// A text as a literal of a statement. There are no parameters above the database layer, so every
// value that comes from outside goes through here.

#include <string>
#include <string_view>

namespace tarlo::host {

// Quoted, with ' doubled; nothing else means anything inside a literal.
inline std::string sqlText(std::string_view text) {
  std::string literal = "N'";
  for (const char c : text) {
    literal += c;
    if (c == '\'') literal += c;
  }
  return literal += '\'';
}

}  // namespace tarlo::host
