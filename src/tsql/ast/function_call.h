#pragma once
#include <string>
#include <vector>

#include "tsql/ast/box.h"
#include "tsql/type.h"

namespace tarlo::tsql::ast {

struct Expr;
struct Query;

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

}  // namespace tarlo::tsql::ast
