// Comparison of the nodes that hold others: defined here, where every node is complete.

#include "tsql/ast/statement.h"

namespace tarlo::tsql::ast {

bool Unary::operator==(const Unary& other) const {
  return op == other.op && operand == other.operand;
}
bool Binary::operator==(const Binary& other) const {
  return op == other.op && left == other.left && right == other.right;
}
bool FunctionCall::operator==(const FunctionCall&) const = default;
bool Cast::operator==(const Cast&) const = default;
bool ScalarSubquery::operator==(const ScalarSubquery&) const = default;
bool SimpleCase::operator==(const SimpleCase&) const = default;
bool SearchedCase::operator==(const SearchedCase&) const = default;
bool Comparison::operator==(const Comparison& other) const {
  return op == other.op && left == other.left && right == other.right;
}
bool Like::operator==(const Like&) const = default;
bool Between::operator==(const Between& other) const {
  return negated == other.negated && operand == other.operand && low == other.low &&
         high == other.high;
}
bool InList::operator==(const InList& other) const {
  return negated == other.negated && operand == other.operand && items == other.items;
}
bool InQuery::operator==(const InQuery& other) const {
  return negated == other.negated && operand == other.operand && query == other.query;
}
bool IsNull::operator==(const IsNull&) const = default;
bool Exists::operator==(const Exists&) const = default;
bool Not::operator==(const Not&) const = default;
bool Logical::operator==(const Logical&) const = default;
bool DerivedTable::operator==(const DerivedTable&) const = default;

}  // namespace tarlo::tsql::ast
