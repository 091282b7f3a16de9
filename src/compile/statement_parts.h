#pragma once
// A statement taken apart at its clauses and items, for people to read: compared item by item, or
// laid out over lines.

#include <string>
#include <string_view>
#include <vector>

namespace tarlo::compile {

struct Clause {
  std::string keyword;             // "select", "from", "where", ...; "" for text that is no clause
  std::vector<std::string> items;  // its items, trimmed
};

// Parts a statement at its clauses, and each clause at the commas, or the words "and", that stand
// outside parentheses, brackets and quotes. Any text is taken.
std::vector<Clause> splitStatement(std::string_view statement);

// The same statement with each clause on a line of its own, and lines broken between items so that
// they take at most `width` columns; a longer item has a line for itself. Ends in a line end. A
// statement that is not regular enough for that (an empty item, keywords in capitals) stays as it
// is, since what is shown must be what would run.
std::string laidOut(std::string_view statement, std::size_t width);

}  // namespace tarlo::compile
