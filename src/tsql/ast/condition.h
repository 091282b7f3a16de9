#pragma once
// A truth-valued construct: what WHERE, HAVING, ON and WHEN take.

#include <variant>
#include <vector>

#include "tsql/ast/box.h"
#include "tsql/position.h"
#include "tsql/type.h"

namespace tarlo::tsql::ast {

struct Expr;
struct Query;
struct Condition;

enum class ComparisonOp { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };
// In every comparing node `common` is set while resolving: the type both sides are compared as.
struct Comparison {
  ComparisonOp op;
  Box<Expr> left;
  Box<Expr> right;
  Type common;
  bool operator==(const Comparison&) const;
};

struct Like {
  Box<Expr> operand;
  Box<Expr> pattern;
  bool negated = false;
  bool operator==(const Like&) const;
};

struct Between {
  Box<Expr> operand;
  Box<Expr> low;
  Box<Expr> high;
  bool negated = false;
  Type common;
  bool operator==(const Between&) const;
};

struct InList {
  Box<Expr> operand;
  std::vector<Expr> items;  // at least one
  bool negated = false;
  Type common;
  bool operator==(const InList&) const;
};

struct InQuery {
  Box<Expr> operand;
  Box<Query> query;
  bool negated = false;
  Type common;
  bool operator==(const InQuery&) const;
};

struct IsNull {
  Box<Expr> operand;
  bool negated = false;
  bool operator==(const IsNull&) const;
};

struct Exists {
  Box<Query> query;
  bool operator==(const Exists&) const;
};

struct Not {
  Box<Condition> operand;
  bool operator==(const Not&) const;
};

enum class LogicOp { And, Or };
struct Logical {
  LogicOp op;
  Box<Condition> left;
  Box<Condition> right;
  bool operator==(const Logical&) const;
};

using ConditionNode =
    std::variant<Comparison, Like, Between, InList, InQuery, IsNull, Exists, Not, Logical>;

struct Condition {
  Position position;
  ConditionNode node;
  friend bool operator==(const Condition& a, const Condition& b) { return a.node == b.node; }
};

}  // namespace tarlo::tsql::ast
