#pragma once
// How one compiled statement differs from another, by select items and clauses: two statements of
// several thousand characters cannot be compared by eye.

#include <string>
#include <string_view>
#include <vector>

namespace tarlo::app {

struct StatementDiff {
  std::vector<std::string> lines;  // the clause's name, then "- old" and "+ new" lines under it
  std::size_t gone = 0;
  std::size_t added = 0;
};

// Clauses with thousands of items are not compared in order: they get one line with the counts.
StatementDiff diffStatements(std::string_view before, std::string_view after);

// "2 items gone, 1 new", or a word on texts that differ in blanks alone.
std::string summaryOf(const StatementDiff& diff);

}  // namespace tarlo::app
