#include "app/statement_diff.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>

#include "variant/text.h"

namespace tarlo::app {
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
  return variant::equalsNoCase(text.substr(at, word.size()), word);
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
    const std::string_view item = variant::trim(text_.substr(start_, end - start_));
    if (!item.empty()) clauses_.back().items.emplace_back(item);
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t start_ = 0;
  int depth_ = 0;
  std::vector<Clause> clauses_;
};

using Items = std::vector<std::string>;

// Lengths of the longest common sub-sequences of the tails. A statement has at most some hundred
// items a clause, so the square of that is nothing.
std::vector<std::vector<std::size_t>> commonTails(const Items& a, const Items& b) {
  std::vector<std::vector<std::size_t>> common(a.size() + 1,
                                               std::vector<std::size_t>(b.size() + 1, 0));
  for (std::size_t i = a.size(); i-- > 0;) {
    for (std::size_t j = b.size(); j-- > 0;) {
      common[i][j] =
          a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    }
  }
  return common;
}

void diffItems(std::string_view keyword, const Items& before, const Items& after,
               StatementDiff& diff) {
  const auto common = commonTails(before, after);
  std::vector<std::string> lines;
  std::size_t i = 0, j = 0;
  while (i < before.size() || j < after.size()) {
    if (i < before.size() && j < after.size() && before[i] == after[j]) {
      ++i, ++j;
    } else if (j == after.size() || (i < before.size() && common[i + 1][j] >= common[i][j + 1])) {
      lines.push_back("  - " + before[i++]);
      ++diff.gone;
    } else {
      lines.push_back("  + " + after[j++]);
      ++diff.added;
    }
  }
  if (lines.empty()) return;
  diff.lines.emplace_back(keyword.empty() ? "text" : keyword);
  diff.lines.insert(diff.lines.end(), lines.begin(), lines.end());
}

}  // namespace

std::vector<Clause> splitStatement(std::string_view statement) {
  return Splitter(statement).split();
}

StatementDiff diffStatements(std::string_view before, std::string_view after) {
  const std::vector<Clause> old = splitStatement(before);
  std::vector<Clause> fresh = splitStatement(after);
  StatementDiff diff;
  for (const Clause& clause : old) {
    const auto same = std::find_if(fresh.begin(), fresh.end(), [&](const Clause& other) {
      return other.keyword == clause.keyword;
    });
    diffItems(clause.keyword, clause.items, same == fresh.end() ? Items{} : same->items, diff);
    if (same != fresh.end()) fresh.erase(same);
  }
  for (const Clause& clause : fresh) diffItems(clause.keyword, {}, clause.items, diff);
  return diff;
}

std::string summaryOf(const StatementDiff& diff) {
  if (diff.gone == 0 && diff.added == 0) return "only blanks or the case of words differ";
  return fmt::format("{} item{} gone, {} new", diff.gone, diff.gone == 1 ? "" : "s", diff.added);
}

}  // namespace tarlo::app
