#pragma once
// Tree to T-SQL text, as short as parentheses allow: parse(printTsql(tree)) equals the tree.

#include <string>

#include "tsql/ast/statement.h"

namespace tarlo::tsql {

std::string printTsql(const ast::Batch& batch);
std::string printTsql(const ast::Expr& expr);
std::string printTsql(const ast::Condition& condition);

}  // namespace tarlo::tsql
