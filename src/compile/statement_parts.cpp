#include "compile/statement_parts.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "text/display_width.h"
#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::compile {
namespace {

constexpr std::array<std::string_view, 7> kClauses = {"select",   "from",   "where", "group by",
                                                      "order by", "having", "union"};

bool isWordPart(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || (c & 0x80) != 0;
}

// Whether the word or words stand at `at`, with no part of a name on either side.
bool wordAt(std::string_view text, std::size_t at, std::string_view word) {
  if (at > 0 && isWordPart(text[at - 1])) return false;
  const std::size_t end = at + word.size();
  if (end < text.size() && isWordPart(text[end])) return false;
  return text::equalsNoCase(text.substr(at, word.size()), word);
}

class Splitter {
 public:
  explicit Splitter(std::string_view text) : text_(text) {}

  std::vector<Clause> split() {
    clauses_.emplace_back();
    while (at_ < text_.size()) step();
    endItem(at_);
    if (clauses_.front().items.empty()) clauses_.erase(clauses_.begin());
    return std::move(clauses_);
  }

 private:
  void step() {
    const char c = text_[at_];
    if (c == '\'' || c == '"' || c == '[') {
      const std::size_t end = text_.find(c == '[' ? ']' : c, at_ + 1);
      at_ = end == std::string_view::npos ? text_.size() : end + 1;
      return;
    }
    if (c == '(') ++depth_;
    if (c == ')') --depth_;
    if (depth_ == 0 && (beginClause() || separator())) return;
    ++at_;
  }

  bool beginClause() {
    for (const std::string_view keyword : kClauses) {
      if (!wordAt(text_, at_, keyword)) continue;
      endItem(at_);
      clauses_.push_back({std::string(keyword), {}});
      at_ += keyword.size();
      start_ = at_;
      return true;
    }
    return false;
  }

  bool separator() {
    const bool conditions = clauses_.back().keyword == "where";
    const std::string_view word = conditions ? "and" : ",";
    if (conditions ? !wordAt(text_, at_, word) : text_[at_] != ',') return false;
    endItem(at_);
    at_ += word.size();
    start_ = at_;
    return true;
  }

  void endItem(std::size_t end) {
    const std::string_view item = text::trim(text_.substr(start_, end - start_));
    if (!item.empty()) clauses_.back().items.emplace_back(item);
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t start_ = 0;
  int depth_ = 0;
  std::vector<Clause> clauses_;
};

std::string withoutBlanks(std::string_view text) {
  std::string rest;
  for (const char c : text) {
    if (c != ' ' && c != '\n') rest += c;
  }
  return rest;
}

// Appends the items of a clause, the first behind its keyword.
void layOutClause(std::string& out, const Clause& clause, std::size_t width) {
  constexpr std::string_view kIndent = "  ";
  const std::string_view separator = clause.keyword == "where" ? " and" : ",";
  std::string line = clause.keyword;
  for (std::size_t i = 0; i < clause.items.size(); ++i) {
    std::string item = text::visible(clause.items[i]);
    if (i + 1 < clause.items.size()) item += separator;
    if (line.size() > kIndent.size() &&
        text::displayWidth(line) + 1 + text::displayWidth(item) > width) {
      out += line + '\n';
      line = kIndent;
      line += item;
      continue;
    }
    if (!line.empty()) line += ' ';
    line += item;
  }
  out += line + '\n';
}

}  // namespace

std::vector<Clause> splitStatement(std::string_view statement) {
  return Splitter(statement).split();
}

std::string laidOut(std::string_view statement, std::size_t width) {
  std::string out;
  for (const Clause& clause : splitStatement(statement)) layOutClause(out, clause, width);
  return withoutBlanks(out) == withoutBlanks(statement) ? out : std::string(statement) + '\n';
}

}  // namespace tarlo::compile
