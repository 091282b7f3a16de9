#pragma once
// A scalar expression. A comparison is not one: T-SQL has no value for it, so it lives in
// condition.h.

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tsql/ast/box.h"
#include "tsql/ast/literal.h"
#include "tsql/ast/operators.h"
#include "tsql/position.h"
#include "tsql/type.h"

namespace tarlo::tsql::ast {

struct Expr;
struct Query;
struct Condition;

// `F`, `T.F`, `[T].[F]`. Delimiters are gone; a dot inside brackets is part of the name.
struct ColumnRef {
  std::string table;  // "" when unqualified; as typed
  std::string name;   // as typed
  // Set while resolving: how many queries outward the table stands (0 = this one), which FROM entry
  // of that query (counted through joins), which column of it; -1 before.
  int level = -1;
  int source = -1;
  int column = -1;

  friend bool operator==(const ColumnRef& a, const ColumnRef& b) {
    return a.table == b.table && a.name == b.name;
  }
};

// `@name`, `@@IDENTITY`: the name with its signs, as typed.
struct Variable {
  std::string name;
  bool operator==(const Variable&) const = default;
};

// NAME(a, b). Aggregates too; DATEPART and its like keep their part name in `part`.
struct FunctionCall {
  std::string name;  // upper case
  std::vector<Expr> arguments;
  bool star = false;      // COUNT(*)
  bool distinct = false;  // COUNT(DISTINCT x)
  std::string part;       // DATEPART, DATENAME, DATEADD, DATEDIFF: the part as typed, else ""
  bool operator==(const FunctionCall&) const;
};

// CAST(x AS type) and CONVERT(type, x [, style]).
struct Cast {
  Box<Expr> operand;
  std::string typeName;        // as typed, without its numbers
  std::vector<int> typeSizes;  // (18, 2), (50); -1 stands for MAX
  bool isConvert = false;
  int style = -1;  // -1 = none given
  bool operator==(const Cast&) const;
};

// A query in parentheses that stands for one value.
struct ScalarSubquery {
  Box<Query> query;
  bool operator==(const ScalarSubquery&) const;
};

// CASE x WHEN a THEN b ... ELSE c END.
struct SimpleCase {
  struct Branch;
  Box<Expr> operand;
  std::vector<Branch> branches;
  std::optional<Box<Expr>> otherwise;
  bool operator==(const SimpleCase&) const;
};

// CASE WHEN p THEN b ... ELSE c END; IIF(p, a, b) is one too.
struct SearchedCase {
  struct Branch;
  std::vector<Branch> branches;
  std::optional<Box<Expr>> otherwise;
  bool operator==(const SearchedCase&) const;
};

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
