#include "frame/place.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "variant/utf8.h"

namespace tarlo::frame {
namespace {

constexpr std::array<std::pair<std::string_view, Place>, 16> kWords = {{
    {"built", Place::Built},
    {"text", Place::Text},
    {"textarea", Place::Textarea},
    {"attribute", Place::Attribute},
    {"attribute-single", Place::AttributeSingle},
    {"encoded", Place::Encoded},
    {"kept", Place::Kept},
    {"bare", Place::Bare},
    {"script", Place::Script},
    {"script-single", Place::ScriptSingle},
    {"script-double", Place::ScriptDouble},
    {"json", Place::Json},
    {"address", Place::Address},
    {"number", Place::Number},
    {"numbers", Place::Numbers},
    {"name", Place::Name},
}};

bool isOneOf(char c, std::string_view set) {
  return set.find(c) != std::string_view::npos;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::string_view namedReference(char c) {
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

void appendReference(std::string& out, char c) {
  if (const std::string_view name = namedReference(c); !name.empty()) {
    out += name;
  } else {
    out.append("&#").append(std::to_string(static_cast<unsigned char>(c))).append(1, ';');
  }
}

// Each character of `set` as a reference.
std::string withReferences(std::string_view value, std::string_view set) {
  std::string out;
  out.reserve(value.size() + value.size() / 8);
  for (const char c : value) {
    if (isOneOf(c, set)) {
      appendReference(out, c);
    } else {
      out += c;
    }
  }
  return out;
}

constexpr std::string_view kEncoded = "&<>\"";
constexpr std::string_view kInBare = "&<>\"'=` \t\r\n\f";

std::string_view letters(std::string_view text) {
  const auto isWordPart = [](char c) { return isLetter(c) || isDigit(c); };
  const auto* end = std::find_if_not(text.begin(), text.end(), isWordPart);
  return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

// Whether a character reference begins here: &name; or &#digits;
bool beginsReference(std::string_view text) {
  constexpr std::size_t kLongest = 10;
  text.remove_prefix(text.starts_with("&#") ? 2 : 1);
  const std::size_t length = letters(text).size();
  return length > 0 && length <= kLongest && text.substr(length).starts_with(';');
}

// Whether a character beyond ASCII begins here as browsers send those that the page's code page
// does not have: &#digits;
bool isSentCharacter(std::string_view text) {
  if (!text.starts_with("&#")) return false;
  text.remove_prefix(2);
  constexpr std::size_t kMostDigits = 7;
  const std::string_view word = letters(text);
  if (word.size() > kMostDigits || !std::ranges::all_of(word, isDigit)) return false;
  int point = 0;
  for (const char c : word) point = point * 10 + (c - '0');
  return point >= 0x80 && text.substr(word.size()).starts_with(';');
}

// Whether browsers may take the & that the text begins with for more than itself, and it is not one
// of their own making. Some names need
// no semicolon, in an attribute only where neither a letter nor "=" follows. What the page has
// behind the value is not known, so an & at its end counts too.
bool isReadAsReference(std::string_view text, bool inAttribute) {
  if (isSentCharacter(text)) return false;
  text.remove_prefix(1);
  if (text.empty() || text[0] == '#') return true;
  const std::size_t length = letters(text).size();
  if (length == 0 || !isLetter(text[0])) return false;
  return !inAttribute || !text.substr(length).starts_with('=');
}

std::string attributeText(std::string_view value, char quote) {
  std::string out;
  out.reserve(value.size() + value.size() / 8);
  for (std::size_t i = 0; i < value.size(); ++i) {
    const bool ends =
        value[i] == quote || (value[i] == '&' && isReadAsReference(value.substr(i), true));
    if (ends) {
      appendReference(out, value[i]);
    } else {
      out += value[i];
    }
  }
  return out;
}

// `tagMarks` are the characters that make a < the beginning of markup; a letter is told as "a".
std::string elementText(std::string_view value, std::string_view tagMarks) {
  const auto opens = [&](std::string_view rest) {
    if (rest.size() == 1) return true;
    return isOneOf(isLetter(rest[1]) ? 'a' : rest[1], tagMarks);
  };
  std::string out;
  out.reserve(value.size() + value.size() / 8);
  for (std::size_t i = 0; i < value.size(); ++i) {
    const std::string_view rest = value.substr(i);
    const bool ends =
        (rest[0] == '<' && opens(rest)) || (rest[0] == '&' && isReadAsReference(rest, false));
    if (ends) {
      appendReference(out, rest[0]);
    } else {
      out += rest[0];
    }
  }
  return out;
}

std::string keptText(std::string_view value) {
  std::string out;
  out.reserve(value.size() + value.size() / 8);
  for (std::size_t i = 0; i < value.size(); ++i) {
    const bool stays =
        !isOneOf(value[i], kEncoded) || (value[i] == '&' && beginsReference(value.substr(i)));
    if (stays) {
      out += value[i];
    } else {
      appendReference(out, value[i]);
    }
  }
  return out;
}

std::string textareaText(std::string_view value) {
  const bool isBlankFirst = value.starts_with('\n') || value.starts_with('\r');
  return (isBlankFirst ? "\r\n" : "") + elementText(value, "/");
}

// U+2028 and U+2029 are line ends to older scripts: their last byte tells them apart.
std::string_view separatorEscape(std::string_view text) {
  if (text.starts_with("\u2028")) return "\\u2028";
  if (text.starts_with("\u2029")) return "\\u2029";
  return {};
}

// Whether the text, which may go on behind its end, begins with the mark in any case of letters.
bool mayBegin(std::string_view text, std::string_view mark) {
  const std::size_t length = std::min(text.size(), mark.size());
  return std::equal(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length), mark.begin(),
                    [](char c, char m) { return (isLetter(c) ? (c | 0x20) : c) == m; });
}

// Whether the "<" that the text begins with is escaped.
bool opensMark(std::string_view text, bool isSparing) {
  const char next = text.size() > 1 ? text[1] : '/';
  if (!isSparing) return next == '/' || next == '!';
  return mayBegin(text, "</script") || mayBegin(text, "<script") || mayBegin(text, "<!--");
}

struct ScriptQuotes {
  std::string_view escaped;  // the quotes that the string could stand in
  bool isSparing;
};

std::string scriptString(std::string_view value, ScriptQuotes quotes) {
  std::string out;
  out.reserve(value.size() + value.size() / 8 + 2);
  for (std::size_t i = 0; i < value.size(); ++i) {
    const std::string_view rest = value.substr(i);
    if (quotes.isSparing && rest.starts_with("\r\n")) continue;  // the \n stands for both
    if (rest[0] == '\r') {
      out += quotes.isSparing ? "\\n" : "\\r";
    } else if (rest[0] == '\n') {
      out += "\\n";
    } else if (rest[0] == '\\' || isOneOf(rest[0], quotes.escaped)) {
      out.append(1, '\\').append(1, rest[0]);
    } else if (rest[0] == '<' && opensMark(rest, quotes.isSparing)) {
      out += "\\x3c";
    } else if (const std::string_view separator = separatorEscape(rest); !separator.empty()) {
      out += separator;
      i += 2;
    } else {
      out += rest[0];
    }
  }
  return out;
}

// UTF-16 units of the character as escapes.
void appendEscapes(std::string& out, char32_t point) {
  if (point >= 0x10000) {
    appendEscapes(out, 0xD800 + ((point - 0x10000) >> 10));
    point = 0xDC00 + ((point - 0x10000) & 0x3FF);
  }
  constexpr std::string_view kDigits = "0123456789abcdef";
  out += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) out += kDigits[point >> shift & 0xF];
}

std::string jsonString(std::string_view text) {
  std::string out = "\"";
  const auto isPlain = [](char c) {
    return c >= ' ' && c <= '~' && c != '"' && c != '\\' && c != '<';
  };
  while (!text.empty()) {
    const auto* end = std::find_if_not(text.begin(), text.end(), isPlain);
    out.append(text.begin(), end);
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    if (!text.empty()) appendEscapes(out, variant::takeCodePoint(text));
  }
  return out += '"';
}

std::string addressPart(std::string_view value) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string out;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const auto byte = static_cast<unsigned char>(value[i]);
    if (isOneOf(value[i], "\"'<>&\\\r\n")) {
      out += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    } else if (const auto separator = separatorEscape(value.substr(i)); !separator.empty()) {
      i += 2;  // no part of any address
    } else {
      out += value[i];
    }
  }
  return out;
}

// Digits, with a sign in front, a fraction or an exponent.
bool isNumber(std::string_view text) {
  const auto skipDigits = [&] {
    const std::size_t before = text.size();
    while (!text.empty() && isDigit(text[0])) text.remove_prefix(1);
    return before != text.size();
  };
  const auto skip = [&](std::string_view set) {
    const bool isThere = !text.empty() && isOneOf(text[0], set);
    if (isThere) text.remove_prefix(1);
    return isThere;
  };
  skip("+-");
  if (!skipDigits()) return false;
  if (skip(".") && !skipDigits()) return false;
  if (skip("eE")) {
    skip("+-");
    if (!skipDigits()) return false;
  }
  return text.empty();
}

bool areNumbers(std::string_view text) {
  for (;;) {
    const std::size_t comma = text.find(',');
    if (!isNumber(text.substr(0, comma))) return false;
    if (comma == std::string_view::npos) return true;
    text.remove_prefix(comma + 1);
  }
}

bool isName(std::string_view text) {
  const auto isPart = [](char c) {
    return isLetter(c) || isDigit(c) || isOneOf(c, "_$") || static_cast<unsigned char>(c) >= 0x80;
  };
  return !text.empty() && !isDigit(text[0]) && std::ranges::all_of(text, isPart);
}

}  // namespace

std::optional<Place> placeNamed(std::string_view word) {
  const auto* found = std::ranges::find(kWords, word, &std::pair<std::string_view, Place>::first);
  if (found == kWords.end()) return {};
  return found->second;
}

std::string inPlace(Place place, std::string_view value) {
  switch (place) {
    case Place::Built:
      break;
    case Place::Text:
      return elementText(value, "a/!?");
    case Place::Textarea:
      return textareaText(value);
    case Place::Attribute:
      return attributeText(value, '"');
    case Place::AttributeSingle:
      return attributeText(value, '\'');
    case Place::Encoded:
      return withReferences(value, kEncoded);
    case Place::Kept:
      return keptText(value);
    case Place::Bare:
      return withReferences(value, kInBare);
    case Place::Script:
      return scriptString(value, {"\"'", false});
    case Place::ScriptSingle:
      return scriptString(value, {"'", true});
    case Place::ScriptDouble:
      return scriptString(value, {"\"", true});
    case Place::Json:
      return jsonString(value);
    case Place::Address:
      return addressPart(value);
    case Place::Number:
      return isNumber(value) ? std::string(value) : "0";
    case Place::Numbers:
      return areNumbers(value) ? std::string(value) : "0";
    case Place::Name:
      return isName(value) ? std::string(value) : "_";
  }
  return std::string(value);
}

std::string inPlace(std::span<const Place> places, std::string_view value) {
  std::string out(value);
  for (const Place place : places) out = inPlace(place, out);
  return out;
}

}  // namespace tarlo::frame
