// Searching in texts: CHARINDEX, REPLACE and LIKE, which see neither case nor width.

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "database/sqlite/function_call.h"
#include "database/sqlite/text_fold.h"

namespace tarlo::database {
namespace {

constexpr std::size_t kMostBytes = 2'000'000;
constexpr std::size_t kMostPattern = 8000;

// A folded text and where each of its characters starts in the bytes.
struct Searched {
  explicit Searched(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
      starts.push_back(at);
      characters.push_back(foldCharacter(decodeCharacter(text, at)));
    }
    starts.push_back(text.size());
  }
  std::u32string characters;
  std::vector<std::size_t> starts;
};

std::int64_t unitsOf(char32_t c) {
  return c >= 0x10000 && c < 0x110000 ? 2 : 1;
}

// Finds a text again and again, in time that grows with the lengths' sum and not their product:
// what is looked for and what it is looked for in are both an author's.
class Finder {
 public:
  explicit Finder(std::u32string_view wanted) : wanted_(wanted), borders_(wanted.size(), 0) {
    for (std::size_t i = 1, length = 0; i < wanted.size(); ++i) {
      while (length > 0 && wanted[i] != wanted[length]) length = borders_[length - 1];
      if (wanted[i] == wanted[length]) ++length;
      borders_[i] = length;
    }
  }
  // Where it stands at or behind `from`; npos when it does not.
  std::size_t find(std::u32string_view text, std::size_t from) const {
    std::size_t length = 0;
    for (std::size_t i = from; i < text.size(); ++i) {
      while (length > 0 && text[i] != wanted_[length]) length = borders_[length - 1];
      if (text[i] == wanted_[length]) ++length;
      if (length == wanted_.size()) return i + 1 - length;
    }
    return std::u32string_view::npos;
  }

 private:
  const std::u32string_view wanted_;  // not empty
  std::vector<std::size_t> borders_;  // for each front of it: its longest border
};

// tsql_charindex(wanted, text, start)
void charIndex(FunctionCall& call) {
  const std::u32string wanted = foldText(call.text(0));
  const std::u32string text = foldText(call.text(1));
  if (wanted.empty()) return call.give(std::int64_t{0});
  const std::int64_t start = std::max<std::int64_t>(call.integer(2), 1);
  std::size_t from = 0;
  std::int64_t unit = 1;
  while (from < text.size() && unit < start) unit += unitsOf(text[from++]);
  const std::size_t found = unit < start ? std::u32string::npos : Finder(wanted).find(text, from);
  if (found == std::u32string::npos) return call.give(std::int64_t{0});
  for (; from < found; ++from) unit += unitsOf(text[from]);
  call.give(unit);
}

// tsql_replace(text, wanted, by)
void replace(FunctionCall& call) {
  const std::string_view text = call.text(0);
  const std::u32string wanted = foldText(call.text(1));
  if (wanted.empty()) return call.giveSame(0);
  const Searched searched(text);
  const Finder finder(wanted);
  std::string result;
  std::size_t from = 0;
  for (;;) {
    const std::size_t found = finder.find(searched.characters, from);
    if (found == std::u32string::npos) break;
    result += text.substr(searched.starts[from], searched.starts[found] - searched.starts[from]);
    result += call.text(2);
    if (result.size() > kMostBytes) throw FunctionError("REPLACE makes too long a text");
    from = found + wanted.size();
  }
  result += text.substr(searched.starts[from]);
  call.give(std::string_view(result));
}

// One element of a LIKE pattern: a character, `_`, `%` or a set in brackets.
struct Element {
  enum class Kind { Character, Any, AnyRun, Set } kind = Kind::Character;
  char32_t character = 0;
  bool negated = false;
  std::vector<std::pair<char32_t, char32_t>> ranges;

  bool takes(char32_t c) const {
    if (kind == Kind::Character) return c == character;
    if (kind != Kind::Set) return true;
    const bool in = std::any_of(ranges.begin(), ranges.end(), [c](const auto& range) {
      return c >= range.first && c <= range.second;
    });
    return in != negated;
  }
};

// Reads `[a-c]` or `[^x]` from the bracket at `at`; a bracket that is never closed takes nothing.
Element readSet(const std::u32string& pattern, std::size_t& at) {
  Element set;
  set.kind = Element::Kind::Set;
  std::size_t i = at + 1;
  if (i < pattern.size() && pattern[i] == U'^') {
    set.negated = true;
    ++i;
  }
  const std::size_t close = pattern.find(U']', i);
  const std::size_t end = std::min(close, pattern.size());
  while (i < end) {
    const char32_t first = pattern[i];
    const bool isRange = i + 2 < end && pattern[i + 1] == U'-';
    set.ranges.emplace_back(first, isRange ? pattern[i + 2] : first);
    i += isRange ? 3 : 1;
  }
  if (close == std::u32string::npos) set = Element{Element::Kind::Set, 0, false, {}};
  at = end + 1;
  return set;
}

std::vector<Element> readPattern(const std::u32string& pattern) {
  std::vector<Element> elements;
  for (std::size_t at = 0; at < pattern.size();) {
    const char32_t c = pattern[at];
    if (c == U'[') {
      elements.push_back(readSet(pattern, at));
      continue;
    }
    Element element;
    element.character = c;
    if (c == U'_') element.kind = Element::Kind::Any;
    if (c == U'%') element.kind = Element::Kind::AnyRun;
    elements.push_back(std::move(element));
    ++at;
  }
  return elements;
}

// Greedy with one point of return, so that the time is at most length times length.
bool matches(const std::vector<Element>& pattern, std::u32string_view text, WorkMeter& meter) {
  std::size_t p = 0, t = 0, returnPattern = pattern.size(), returnText = 0;
  bool canReturn = false;
  while (t < text.size()) {
    meter.add(1 + (p < pattern.size() ? pattern[p].ranges.size() : 0));
    if (p < pattern.size() && pattern[p].kind == Element::Kind::AnyRun) {
      canReturn = true;
      returnPattern = ++p;
      returnText = t;
    } else if (p < pattern.size() && pattern[p].takes(text[t])) {
      ++p;
      ++t;
    } else if (canReturn) {
      p = returnPattern;
      t = ++returnText;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p].kind == Element::Kind::AnyRun) ++p;
  return p == pattern.size();
}

// A pattern, read once. It is the same for all rows of a statement, so SQLite keeps it with the
// call for as long as the argument stays.
struct Pattern {
  explicit Pattern(std::string_view text) : elements(readPattern(foldText(text))) {
    using Kind = Element::Kind;
    const auto isRun = [](const Element& element) { return element.kind == Kind::AnyRun; };
    if (elements.size() < 2 || !isRun(elements.front()) || !isRun(elements.back())) return;
    for (std::size_t i = 1; i + 1 < elements.size(); ++i) {
      const Element& element = elements[i];
      const bool isOne = element.kind == Kind::Set && !element.negated &&
                         element.ranges.size() == 1 &&
                         element.ranges[0].first == element.ranges[0].second;
      if (element.kind != Kind::Character && !isOne) return;
      part += isOne ? element.ranges[0].first : element.character;
    }
    isPart = true;
  }

  std::vector<Element> elements;
  // `%part%`, which most searches are: whether the text holds it.
  bool isPart = false;
  std::u32string part;
};

const Pattern& patternOf(FunctionCall& call) {
  constexpr int kArgument = 0;
  if (const void* kept = sqlite3_get_auxdata(call.context(), kArgument)) {
    return *static_cast<const Pattern*>(kept);
  }
  auto made = std::make_unique<Pattern>(call.text(kArgument));
  const auto drop = [](void* pattern) {
    std::default_delete<Pattern>()(static_cast<Pattern*>(pattern));
  };
  sqlite3_set_auxdata(call.context(), kArgument, made.release(), drop);
  const void* kept = sqlite3_get_auxdata(call.context(), kArgument);
  if (kept == nullptr) throw FunctionError("there is not enough memory for the LIKE pattern");
  return *static_cast<const Pattern*>(kept);
}

// A text folded, without a trip to the heap for the usual short one.
class FoldedText {
 public:
  explicit FoldedText(std::string_view text) {
    if (text.size() > small_.size()) {
      large_ = foldText(text);
      view_ = large_;
      return;
    }
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size();) {
      small_[count++] = foldCharacter(decodeCharacter(text, at));
    }
    view_ = {small_.data(), count};
  }
  FoldedText(const FoldedText&) = delete;
  FoldedText& operator=(const FoldedText&) = delete;
  std::u32string_view view() const { return view_; }

 private:
  std::array<char32_t, 512> small_;
  std::u32string large_;
  std::u32string_view view_;
};

// A short text is searched in the plain way, which is quicker for it.
bool holds(std::u32string_view text, std::u32string_view part) {
  constexpr std::size_t kLong = 4096;
  if (part.empty() || text.size() < kLong) return text.find(part) != std::u32string_view::npos;
  return Finder(part).find(text, 0) != std::u32string_view::npos;
}

// Blanks at the end of the text may be left over, those of the pattern count.
bool isLike(const Pattern& pattern, std::u32string_view text) {
  if (pattern.isPart) return holds(text, pattern.part);
  WorkMeter meter;
  const std::size_t last = text.find_last_not_of(U' ');
  const std::size_t shortest = last == std::u32string_view::npos ? 0 : last + 1;
  bool found = matches(pattern.elements, text, meter);
  for (std::size_t size = shortest; !found && size < text.size(); ++size) {
    found = matches(pattern.elements, text.substr(0, size), meter);
  }
  return found;
}

// tsql_like(pattern, text)
void like(FunctionCall& call) {
  if (call.text(0).size() > kMostPattern * 3) throw FunctionError("the LIKE pattern is too long");
  const Pattern& pattern = patternOf(call);
  call.give(static_cast<std::int64_t>(isLike(pattern, FoldedText(call.text(1)).view())));
}

constexpr FunctionRow kSearchFunctions[] = {
    {"tsql_charindex", 3, charIndex},
    {"tsql_replace", 3, replace},
    {"tsql_like", 2, like},
};

}  // namespace

std::span<const FunctionRow> searchFunctions() {
  return kSearchFunctions;
}

}  // namespace tarlo::database
