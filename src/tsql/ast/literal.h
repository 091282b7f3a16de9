#pragma once
// A literal as it is written, its place in the statement, and whether it may become a parameter.

#include <string>

#include "tsql/position.h"

namespace tarlo::tsql::ast {

enum class LiteralClass { Integer, Decimal, Float, Text };

// A constant of the text. NULL is a node of its own.
struct Literal {
  LiteralClass literalClass = LiteralClass::Integer;
  std::string text;  // Text: the value, quotes removed and doubled ones single; numbers: as written
  // Its number among the literals of the statement, from 0 in the order of the text; -1 for one
  // that the front end made.
  int ordinal = -1;
  // Set while resolving: the value decides what is printed, so it cannot become a parameter.
  bool fixed = false;

  friend bool operator==(const Literal& a, const Literal& b) {
    return a.literalClass == b.literalClass && a.text == b.text;
  }
};

struct NullLiteral {
  bool operator==(const NullLiteral&) const = default;
};

}  // namespace tarlo::tsql::ast
