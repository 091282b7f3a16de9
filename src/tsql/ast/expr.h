#pragma once
// A scalar expression. A comparison is not one: T-SQL has no value for it, so it lives in
// condition.h.

#include <variant>

#include "tsql/ast/case.h"
#include "tsql/ast/column_ref.h"
#include "tsql/ast/function_call.h"
#include "tsql/ast/literal.h"
#include "tsql/ast/operators.h"
#include "tsql/position.h"
#include "tsql/type.h"

namespace tarlo::tsql::ast {

using ExprNode = std::variant<Literal, NullLiteral, ColumnRef, Variable, Unary, Binary,
                              FunctionCall, Cast, SimpleCase, SearchedCase, ScalarSubquery>;

struct Expr {
  Position position;
  ExprNode node;
  // Set while resolving: the type of the value itself, and the type that the construct round it
  // needs. Where the kinds differ the printer converts; a literal is converted when it is printed
  // or bound.
  Type type;
  Type wanted;

  friend bool operator==(const Expr& a, const Expr& b) { return a.node == b.node; }
};

}  // namespace tarlo::tsql::ast

#include "tsql/ast/condition.h"

namespace tarlo::tsql::ast {

struct SimpleCase::Branch {
  Expr when;
  Expr then;
  bool operator==(const Branch&) const = default;
};
struct SearchedCase::Branch {
  Condition when;
  Expr then;
  bool operator==(const Branch&) const = default;
};

}  // namespace tarlo::tsql::ast
