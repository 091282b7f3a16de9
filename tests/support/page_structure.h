#pragma once
// A page read as browsers read it: tags, attributes and scripts by the rules of their languages, so
// that a test sees whether a value has left its place. What stands between tags, in attributes and
// in strings is no part of the structure.

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <string>
#include <string_view>

#include "text/pieces.h"

namespace tarlo::testing {

struct PageStructure {
  std::string shape;            // tags with their attributes' names, scripts without their strings
  std::set<std::string> names;  // of tags, attributes, and in scripts: what a value must not add to
};

// The value that the references stand for.
inline std::string decoded(std::string_view text) {
  std::string out(text);
  for (const auto& [name, character] : {std::pair{"&lt;", "<"},
                                        {"&gt;", ">"},
                                        {"&quot;", "\""},
                                        {"&#39;", "'"},
                                        {"&#32;", " "},
                                        {"&#61;", "="},
                                        {"&#96;", "`"},
                                        {"&#9;", "\t"},
                                        {"&#10;", "\n"},
                                        {"&#13;", "\r"},
                                        {"&amp;", "&"}}) {
    out = text::replace(out, name, character);
  }
  return out;
}

class PageReader {
 public:
  static PageStructure read(std::string_view page) {
    PageReader reader;
    reader.readMarkup(page);
    return std::move(reader.found_);
  }
  static PageStructure readScript(std::string_view script) {
    PageReader reader;
    reader.script(script);
    return std::move(reader.found_);
  }

 private:
  static bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }
  static bool isLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
  static bool isWord(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return std::isalnum(byte) != 0 || c == '_' || c == '$' || byte >= 0x80;
  }
  static std::string lower(std::string_view text) {
    std::string out(text);
    std::ranges::transform(out, out.begin(), [](unsigned char c) { return std::tolower(c); });
    return out;
  }
  template <class Ends>
  static std::string_view take(std::string_view& text, Ends ends) {
    const auto* end = std::find_if(text.begin(), text.end(), ends);
    const auto length = static_cast<std::size_t>(end - text.begin());
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length);
    return taken;
  }
  static void cutThrough(std::string_view& text, std::string_view mark) {
    const std::size_t at = text.find(mark);
    text.remove_prefix(at == std::string_view::npos ? text.size() : at + mark.size());
  }

  void readMarkup(std::string_view text) {
    while (!text.empty()) {
      cutTo(text, '<');
      if (text.size() < 2) return;
      if (text.starts_with("<!--")) {
        found_.shape += "<!---->";
        cutThrough(text, "-->");
      } else if (text[1] == '!' || text[1] == '?') {
        found_.shape += "<!>";
        cutThrough(text, ">");
      } else if (isLetter(text[1]) || text[1] == '/') {
        tag(text);
      } else {
        text.remove_prefix(1);
      }
    }
  }
  static void cutTo(std::string_view& text, char c) {
    text.remove_prefix(std::min(text.find(c), text.size()));
  }

  void tag(std::string_view& text) {
    text.remove_prefix(1);
    const auto endsName = [](char c) { return isSpace(c) || c == '/' || c == '>'; };
    const bool isEnd = text.starts_with('/');
    if (isEnd) text.remove_prefix(1);
    const std::string name = lower(take(text, endsName));
    add(name, isEnd ? "</" : "<");
    while (!text.empty() && text[0] != '>') attribute(text);
    if (!text.empty()) text.remove_prefix(1);
    found_.shape += '>';
    if (!isEnd) rawText(name, text);
  }

  void attribute(std::string_view& text) {
    if (isSpace(text[0]) || text[0] == '/') return text.remove_prefix(1);
    const auto endsName = [](char c) { return isSpace(c) || c == '/' || c == '>' || c == '='; };
    const bool beginsOdd = text[0] == '=';
    std::string_view rest = text.substr(beginsOdd ? 1 : 0);
    const std::string name = lower(take(rest, endsName));
    text = rest;
    add(name, " ");
    std::string_view behind = text;
    take(behind, [](char c) { return !isSpace(c); });
    if (!behind.starts_with('=')) return;
    text = behind.substr(1);
    take(text, [](char c) { return !isSpace(c); });
    const std::string value = attributeValue(text);
    std::string_view address = value;
    take(address, [](char c) { return !isSpace(c); });
    if (name.starts_with("on")) script(value);
    if (lower(address.substr(0, 11)) == "javascript:") script(address.substr(11));
  }
  static std::string attributeValue(std::string_view& text) {
    if (text.empty() || (text[0] != '"' && text[0] != '\'')) {
      return decoded(take(text, [](char c) { return isSpace(c) || c == '>'; }));
    }
    const char quote = text[0];
    text.remove_prefix(1);
    const std::string value = decoded(take(text, [&](char c) { return c == quote; }));
    if (!text.empty()) text.remove_prefix(1);
    return value;
  }

  // Elements whose text holds no tags.
  void rawText(const std::string& name, std::string_view& text) {
    static constexpr std::array<std::string_view, 6> kRaw = {"script", "style", "textarea",
                                                             "title",  "xmp",   "iframe"};
    if (std::ranges::find(kRaw, name) == kRaw.end()) return;
    const std::size_t end = lower(text).find("</" + name);
    const std::string_view inside = text.substr(0, end);
    if (name == "script") script(inside);
    text.remove_prefix(std::min(end, text.size()));
  }

  void add(const std::string& name, std::string_view before) {
    found_.shape.append(before).append(name);
    found_.names.insert(name);
  }

  // ---- scripts

  void script(std::string_view text) {
    found_.shape += '{';
    std::string last, beforeLast;  // tokens, a string as its text
    while (!text.empty()) {
      std::string token;
      if (text.starts_with("<!--")) add("comment in a script", "!");
      if (text.starts_with("//")) {
        take(text, [](char c) { return c == '\n' || c == '\r'; });
      } else if (text.starts_with("/*")) {
        cutThrough(text, "*/");
      } else if (text[0] == '"' || text[0] == '\'') {
        token = stringText(text);
        embedded(token, last, beforeLast);
        found_.shape += '"';
      } else if (text[0] == '/' && mayBeginPattern(last)) {
        pattern(text);
        token = "pattern";
      } else if (isWord(text[0])) {
        token = take(text, [](char c) { return !isWord(c); });
        found_.names.insert(token);
        found_.shape += std::isdigit(static_cast<unsigned char>(token[0])) != 0 ? '0' : 'i';
      } else {
        if (!isSpace(text[0])) found_.shape += token = text.substr(0, 1);
        text.remove_prefix(1);
      }
      if (token.empty()) continue;
      beforeLast = std::move(last);
      last = std::move(token);
    }
    found_.shape += '}';
  }

  static bool mayBeginPattern(const std::string& last) {
    return last.empty() || std::string_view("(,=:[!&|?{};").find(last) != std::string_view::npos;
  }
  static void pattern(std::string_view& text) {
    text.remove_prefix(1);
    while (!text.empty() && text[0] != '/') text.remove_prefix(text[0] == '\\' ? 2 : 1);
    if (!text.empty()) text.remove_prefix(1);
  }

  std::string stringText(std::string_view& text) {
    const char quote = text[0];
    std::string value;
    for (text.remove_prefix(1); !text.empty() && text[0] != quote; text.remove_prefix(1)) {
      if (text[0] == '\n' || text[0] == '\r') {
        add("a broken string", "!");
        return value;
      }
      if (text[0] == '\\' && text.size() > 1) {
        text.remove_prefix(1);
        if (text.starts_with("x3c")) {
          value += '<';
          text.remove_prefix(2);
        } else if (text.starts_with("u00") && text.size() > 4) {
          value += static_cast<char>(std::stoi(std::string(text.substr(3, 2)), nullptr, 16));
          text.remove_prefix(4);
        } else {
          value += text[0] == 'n' ? '\n' : text[0] == 'r' ? '\r' : text[0];
        }
        continue;
      }
      value += text[0];
    }
    if (!text.empty()) text.remove_prefix(1);
    return value;
  }

  // Strings that the page's scripts use as markup, or run.
  void embedded(const std::string& value, const std::string& last, const std::string& beforeLast) {
    static const std::set<std::string> kMarkup = {"innerHTML", "HTMLHelp",     "divHTML3",
                                                  "groupHTML", "myHTMLfliter", "ViewRecord"};
    static const std::set<std::string> kScripts = {"strJS", "script",           "next",
                                                   "back",  "onRowDoubleClick", "onRowSelect"};
    if (last != "=" && last != ":") return;
    if (kMarkup.contains(beforeLast)) readMarkup(value);
    if (kScripts.contains(beforeLast)) script(value);
  }

  PageStructure found_;
};

inline PageStructure structureOf(std::string_view page) {
  return PageReader::read(page);
}

}  // namespace tarlo::testing
