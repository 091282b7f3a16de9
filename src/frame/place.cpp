#include "frame/place.h"

#include <algorithm>
#include <array>

#include "text/fold.h"
#include "text/utf8.h"

namespace tarlo::frame {
namespace {

using text::isDigit;
using text::isLetter;

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

// The bytes that an escape looks at.
class Stops {
 public:
  constexpr explicit Stops(std::string_view bytes) {
    for (const char c : bytes) has_[static_cast<unsigned char>(c)] = true;
  }
  std::size_t lengthBefore(std::string_view text) const {
    const auto* stop = std::find_if(text.begin(), text.end(),
                                    [this](char c) { return has_[static_cast<unsigned char>(c)]; });
    return static_cast<std::size_t>(stop - text.begin());
  }

 private:
  std::array<bool, 256> has_{};
};

// All but the stops goes out as it is. `escape` is given the text from a stop on, appends what
// stands for its front, and says how many bytes that was.
template <class Escape>
std::string escaped(std::string_view value, const Stops& stops, Escape escape) {
  std::size_t plain = stops.lengthBefore(value);
  if (plain == value.size()) return std::string(value);
  std::string out;
  out.reserve(value.size() + value.size() / 8 + 16);
  for (;;) {
    out += value.substr(0, plain);
    value.remove_prefix(plain);
    if (value.empty()) return out;
    value.remove_prefix(escape(out, value));
    plain = stops.lengthBefore(value);
  }
}

// Each of the stops that `isEscaped` says so of as a reference.
template <class IsEscaped>
std::string withReferences(std::string_view value, const Stops& stops, IsEscaped isEscaped) {
  return escaped(value, stops, [&](std::string& out, std::string_view rest) {
    if (isEscaped(rest)) {
      appendReference(out, rest[0]);
    } else {
      out += rest[0];
    }
    return std::size_t{1};
  });
}

constexpr auto kAlways = [](std::string_view) { return true; };
constexpr Stops kEncoded("&<>\"");
constexpr Stops kInBare("&<>\"'=` \t\r\n\f");
constexpr Stops kInText("<&");
constexpr Stops kInDoubleQuotes("\"&");
constexpr Stops kInSingleQuotes("'&");
// The last is the first byte of the separators.
constexpr Stops kInScript("\r\n\\\"'<\xE2");
constexpr Stops kInAddress("\"'<>&\\\r\n\xE2");

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
// of their own making. Some names need no semicolon, in an attribute only where neither a letter
// nor "=" follows. What the page has behind the value is not known, so an & at its end counts too.
bool isReadAsReference(std::string_view text, bool inAttribute) {
  if (isSentCharacter(text)) return false;
  text.remove_prefix(1);
  if (text.empty() || text[0] == '#') return true;
  const std::size_t length = letters(text).size();
  if (length == 0 || !isLetter(text[0])) return false;
  return !inAttribute || !text.substr(length).starts_with('=');
}

std::string attributeText(std::string_view value, const Stops& stops) {
  return withReferences(value, stops, [](std::string_view rest) {
    return rest[0] != '&' || isReadAsReference(rest, true);
  });
}

// `tagMarks` are the characters that make a < the beginning of markup; a letter is told as "a".
std::string elementText(std::string_view value, std::string_view tagMarks) {
  const auto opens = [&](std::string_view rest) {
    if (rest.size() == 1) return true;
    return isOneOf(isLetter(rest[1]) ? 'a' : rest[1], tagMarks);
  };
  return withReferences(value, kInText, [&](std::string_view rest) {
    return rest[0] == '<' ? opens(rest) : isReadAsReference(rest, false);
  });
}

std::string keptText(std::string_view value) {
  return withReferences(value, kEncoded, [](std::string_view rest) {
    return rest[0] != '&' || !beginsReference(rest);
  });
}

std::string textareaText(std::string_view value) {
  const bool isBlankFirst = value.starts_with('\n') || value.starts_with('\r');
  return (isBlankFirst ? "\r\n" : "") + elementText(value, "/");
}

// U+2028 and U+2029 are line ends to older scripts.
constexpr std::size_t kSeparatorBytes = 3;
std::string_view separatorEscape(std::string_view text) {
  if (text.starts_with("\u2028")) return "\\u2028";
  if (text.starts_with("\u2029")) return "\\u2029";
  return {};
}

// Whether the text, which may go on behind its end, begins with the mark in any case of letters.
bool mayBegin(std::string_view text, std::string_view mark) {
  const std::size_t length = std::min(text.size(), mark.size());
  return std::equal(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length), mark.begin(),
                    [](char c, char m) { return text::folded(c) == m; });
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

std::string_view lineEndEscape(std::string_view text, bool isSparing) {
  if (text[0] == '\n') return "\\n";
  if (!isSparing) return "\\r";
  return text.starts_with("\r\n") ? "" : "\\n";  // the \n stands for both
}

std::string scriptString(std::string_view value, ScriptQuotes quotes) {
  return escaped(value, kInScript, [&](std::string& out, std::string_view rest) {
    if (rest[0] == '\r' || rest[0] == '\n') {
      out += lineEndEscape(rest, quotes.isSparing);
    } else if (rest[0] == '\\' || isOneOf(rest[0], quotes.escaped)) {
      out.append(1, '\\').append(1, rest[0]);
    } else if (rest[0] == '<' && opensMark(rest, quotes.isSparing)) {
      out += "\\x3c";
    } else if (const std::string_view escape = separatorEscape(rest); !escape.empty()) {
      out += escape;
      return kSeparatorBytes;
    } else {
      out += rest[0];
    }
    return std::size_t{1};
  });
}

// UTF-16 units of the character as escapes.
void appendEscapes(std::string& out, char32_t point) {
  if (point >= 0x10000) {
    appendEscapes(out, 0xD800 + ((point - 0x10000) >> 10));
    point = 0xDC00 + ((point - 0x10000) & 0x3FF);
  }
  constexpr std::string_view kDigits = "0123456789abcdef";
  const char escape[] = {'\\',
                         'u',
                         kDigits[point >> 12 & 0xF],
                         kDigits[point >> 8 & 0xF],
                         kDigits[point >> 4 & 0xF],
                         kDigits[point & 0xF]};
  out.append(escape, sizeof escape);
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
    if (!text.empty()) appendEscapes(out, text::takeCodePoint(text));
  }
  return out += '"';
}

std::string addressPart(std::string_view value) {
  return escaped(value, kInAddress, [](std::string& out, std::string_view rest) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    constexpr auto kSeparatorFront = static_cast<unsigned char>('\xE2');
    const auto byte = static_cast<unsigned char>(rest[0]);
    if (byte != kSeparatorFront) {
      out += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    } else if (!separatorEscape(rest).empty()) {
      return kSeparatorBytes;  // no part of any address
    } else {
      out += rest[0];
    }
    return std::size_t{1};
  });
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
      return attributeText(value, kInDoubleQuotes);
    case Place::AttributeSingle:
      return attributeText(value, kInSingleQuotes);
    case Place::Encoded:
      return withReferences(value, kEncoded, kAlways);
    case Place::Kept:
      return keptText(value);
    case Place::Bare:
      return withReferences(value, kInBare, kAlways);
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
  if (places.empty()) return std::string(value);
  std::string out = inPlace(places.front(), value);
  for (const Place place : places.subspan(1)) out = inPlace(place, out);
  return out;
}

}  // namespace tarlo::frame
