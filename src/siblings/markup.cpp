#include "siblings/markup.h"

#include <cctype>

#include "variant/text.h"

namespace tarlo::siblings {
namespace {

std::string_view referenceFor(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return {};
  }
}

// Whether a character reference begins here: &name; or &#digits;
bool beginsReference(std::string_view text) {
  constexpr std::size_t kLongest = 12;
  std::size_t i = text.starts_with("&#") ? 2 : 1;
  const std::size_t first = i;
  while (i < text.size() && i < kLongest && std::isalnum(static_cast<unsigned char>(text[i]))) ++i;
  return i > first && i < text.size() && text[i] == ';';
}

}  // namespace

std::string cellMarkup(std::string_view text) {
  std::string markup;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string_view reference = referenceFor(text[i]);
    const bool stays = reference.empty() || (text[i] == '&' && beginsReference(text.substr(i)));
    if (stays) {
      markup += text[i];
    } else {
      markup += reference;
    }
  }
  return markup;
}

std::string attributeMarkup(std::string_view text) {
  std::string markup;
  for (const char c : text) {
    const std::string_view reference = referenceFor(c);
    if (reference.empty()) {
      markup += c;
    } else {
      markup += reference;
    }
  }
  return markup;
}

std::string scriptSafe(std::string json) {
  return variant::replace(json, "<", "\\u003c");
}

}  // namespace tarlo::siblings
