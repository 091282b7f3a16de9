#pragma once
// How one compiled statement differs from another, by select items and clauses: two statements of
// several thousand characters cannot be compared by eye.

#include <string>
#include <string_view>
#include <vector>

namespace tarlo::app {

struct Clause {
  std::string keyword;             // "select", "from", "where", ...; "" for text that is no clause
  std::vector<std::string> items;  // its items, trimmed
};

// Parts a statement at its clauses, and each clause at the commas, or the words "and", that stand
// outside parentheses, brackets and quotes. Any text is taken.
std::vector<Clause> splitStatement(std::string_view statement);

struct StatementDiff {
  std::vector<std::string> lines;  // the clause's name, then "- old" and "+ new" lines under it
  std::size_t gone = 0;
  std::size_t added = 0;
};

StatementDiff diffStatements(std::string_view before, std::string_view after);

// "2 items gone, 1 new", or a word on texts that differ in blanks alone.
std::string summaryOf(const StatementDiff& diff);

}  // namespace tarlo::app
