#include "text/pieces.h"

#include <algorithm>

namespace tarlo::text {

std::string joined(std::initializer_list<std::string_view> pieces) {
  std::size_t size = 0;
  for (std::string_view piece : pieces) size += piece.size();
  std::string text;
  text.reserve(size);
  for (std::string_view piece : pieces) text.append(piece);
  return text;
}

std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> pieces;
  if (text.empty()) return pieces;
  std::size_t from = 0;
  if (!separator.empty()) {
    for (std::size_t found; (found = text.find(separator, from)) != std::string_view::npos;) {
      pieces.push_back(text.substr(from, found - from));
      from = found + separator.size();
    }
  }
  pieces.push_back(text.substr(from));
  return pieces;
}

std::string join(const std::vector<std::string_view>& pieces, std::string_view separator) {
  std::string result;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0) result.append(separator);
    result.append(pieces[i]);
  }
  return result;
}

std::string replace(std::string_view text, std::string_view wanted, std::string_view by) {
  std::string result;
  result.reserve(text.size());
  std::size_t from = 0;
  if (!wanted.empty()) {
    for (std::size_t found; (found = text.find(wanted, from)) != std::string_view::npos;) {
      result.append(text, from, found - from).append(by);
      from = found + wanted.size();
    }
  }
  return result.append(text, from);
}

std::string_view ltrim(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string_view rtrim(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view trim(std::string_view text) {
  return ltrim(rtrim(text));
}

}  // namespace tarlo::text
