#pragma once
// The operators of expressions and conditions, and of what joins them.

#include "tsql/ast/box.h"

namespace tarlo::tsql::ast {

struct Expr;

enum class UnaryOp { Minus, Plus, BitNot };
struct Unary {
  UnaryOp op;
  Box<Expr> operand;
  bool operator==(const Unary&) const;
};

enum class BinaryOp { Add, Subtract, Multiply, Divide, Modulo, BitAnd, BitOr, BitXor };

// What a resolved operator does; "+" is three different things, decided by the kinds of its
// operands.
enum class Meaning {
  Unresolved,
  Arithmetic,
  Concatenate,
  DatePlusDays,
  DateMinusDays,
  DaysBetween
};
struct Binary {
  BinaryOp op;
  Box<Expr> left;
  Box<Expr> right;
  Meaning meaning = Meaning::Unresolved;
  bool operator==(const Binary&) const;  // the meaning does not take part
};

}  // namespace tarlo::tsql::ast
