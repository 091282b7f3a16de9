#pragma once
// Where something stands in a statement's text, for error messages.

#include <cstdint>

namespace tarlo::tsql {

// Offset in bytes from 0; line and column from 1, the column counted in characters (code points).
// Positions never take part in comparisons of trees: two positions are always equal.
struct Position {
  std::uint32_t offset = 0;
  std::uint32_t line = 1;
  std::uint32_t column = 1;
  friend bool operator==(const Position&, const Position&) { return true; }
};

}  // namespace tarlo::tsql
