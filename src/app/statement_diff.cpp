#include "app/statement_diff.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "compile/statement_parts.h"

namespace tarlo::app {
namespace {

using Items = std::vector<std::string>;

// Beyond this size of the table below nobody reads the differences either.
constexpr std::size_t kMaxCells = 1'000'000;

// Lengths of the longest common sub-sequences of the tails.
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

// Counts what is gone and new without regard to order.
void countItems(std::string_view keyword, Items before, Items after, StatementDiff& diff) {
  std::sort(before.begin(), before.end());
  std::sort(after.begin(), after.end());
  Items gone, added;
  std::set_difference(before.begin(), before.end(), after.begin(), after.end(),
                      std::back_inserter(gone));
  std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                      std::back_inserter(added));
  diff.gone += gone.size();
  diff.added += added.size();
  diff.lines.push_back(fmt::format("{}: too long to compare in order, {} gone, {} new",
                                   keyword.empty() ? "text" : keyword, gone.size(), added.size()));
}

void diffItems(std::string_view keyword, const Items& before, const Items& after,
               StatementDiff& diff) {
  if (before == after) return;
  if ((before.size() + 1) * (after.size() + 1) > kMaxCells) {
    countItems(keyword, before, after, diff);
    return;
  }
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
  diff.lines.emplace_back(keyword.empty() ? "text" : keyword);
  diff.lines.insert(diff.lines.end(), lines.begin(), lines.end());
}

}  // namespace

StatementDiff diffStatements(std::string_view before, std::string_view after) {
  const std::vector<compile::Clause> old = compile::splitStatement(before);
  std::vector<compile::Clause> fresh = compile::splitStatement(after);
  StatementDiff diff;
  for (const compile::Clause& clause : old) {
    const auto same = std::find_if(fresh.begin(), fresh.end(), [&](const compile::Clause& other) {
      return other.keyword == clause.keyword;
    });
    diffItems(clause.keyword, clause.items, same == fresh.end() ? Items{} : same->items, diff);
    if (same != fresh.end()) fresh.erase(same);
  }
  for (const compile::Clause& clause : fresh) diffItems(clause.keyword, {}, clause.items, diff);
  return diff;
}

std::string summaryOf(const StatementDiff& diff) {
  if (diff.lines.empty()) return "only blanks or the case of words differ";
  return fmt::format("{} item{} gone, {} new", diff.gone, diff.gone == 1 ? "" : "s", diff.added);
}

}  // namespace tarlo::app
