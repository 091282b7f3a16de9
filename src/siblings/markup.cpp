#include "siblings/markup.h"

#include <algorithm>
#include <cctype>

#include "variant/utf8.h"

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

// UTF-16 units of the character as escapes.
void appendEscapes(std::string& script, char32_t point) {
  if (point >= 0x10000) {
    appendEscapes(script, 0xD800 + ((point - 0x10000) >> 10));
    point = 0xDC00 + ((point - 0x10000) & 0x3FF);
  }
  constexpr std::string_view kDigits = "0123456789abcdef";
  script += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) script += kDigits[point >> shift & 0xF];
}

}  // namespace

void appendCell(std::string& markup, std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string_view reference = referenceFor(text[i]);
    const bool stays = reference.empty() || (text[i] == '&' && beginsReference(text.substr(i)));
    if (stays) {
      markup += text[i];
    } else {
      markup += reference;
    }
  }
}

std::string cellMarkup(std::string_view text) {
  std::string markup;
  appendCell(markup, text);
  return markup;
}

void appendAttribute(std::string& markup, std::string_view text) {
  for (const char c : text) {
    const std::string_view reference = referenceFor(c);
    if (reference.empty()) {
      markup += c;
    } else {
      markup += reference;
    }
  }
}

std::string attributeMarkup(std::string_view text) {
  std::string markup;
  appendAttribute(markup, text);
  return markup;
}

void appendScriptString(std::string& script, std::string_view text) {
  script += '"';
  const auto isPlain = [](char c) {
    return c >= ' ' && c <= '~' && c != '"' && c != '\\' && c != '<';
  };
  while (!text.empty()) {
    const auto* end = std::find_if_not(text.begin(), text.end(), isPlain);
    script.append(text.begin(), end);
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    if (!text.empty()) appendEscapes(script, variant::takeCodePoint(text));
  }
  script += '"';
}

}  // namespace tarlo::siblings
