#pragma once
// The shape of a statement: its text with every literal taken out. Statements that differ in values
// only have one shape, so a translation found by shape serves them all.

#include <string>
#include <string_view>
#include <vector>

#include "tsql/ast/literal.h"

namespace tarlo::tsql {

struct ShapedLiteral {
  ast::LiteralClass literalClass;
  // Numbers and texts without a doubled quote point into the statement; others into `unescaped` of
  // the shape.
  std::string_view text;
};

struct Shape {
  Shape() = default;
  Shape(Shape&&) noexcept = default;
  Shape& operator=(Shape&&) noexcept = default;

  // The text with each literal replaced by a control character and a class letter ("\x01" + i,
  // d<scale>, f or s; I for an integer beyond 18 digits or in hexadecimal digits); comments become
  // one blank. Never empty for a non-empty text.
  std::string key;
  std::vector<ShapedLiteral> literals;
  std::string unescaped;
};

// One pass, no grammar: literals are found as the lexer finds them, with the same ordinals. Reuses
// the capacity of `shape`. Returns false when the text does not lex (an open quote, a control
// character \x01): parse it for the error.
bool shapeOf(std::string_view sql, Shape& shape);

}  // namespace tarlo::tsql
