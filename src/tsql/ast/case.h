#pragma once
#include <optional>
#include <vector>

#include "tsql/ast/box.h"

namespace tarlo::tsql::ast {

struct Expr;
struct Condition;

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

}  // namespace tarlo::tsql::ast
