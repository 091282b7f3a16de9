// Conditions. How values of a kind compare is the engine's. Parameters get their numbers in the
// order of printing, which is from the right.

#include <fmt/format.h>

#include "tsql/print/printing.h"

namespace tarlo::tsql::print {
namespace {

std::string_view symbol(ast::ComparisonOp op) {
  constexpr std::string_view kSymbols[] = {"=", "<>", "<", "<=", ">", ">="};
  return kSymbols[static_cast<std::size_t>(op)];
}

class ConditionPrinter {
 public:
  explicit ConditionPrinter(Writer& writer) : writer_(writer), engine_(writer.engine()) {}

  std::string operator()(const ast::Comparison& node) const {
    const bool isEquality =
        node.op == ast::ComparisonOp::Equal || node.op == ast::ComparisonOp::NotEqual;
    const Use use = isEquality ? Use::Equality : Use::Order;
    const std::string right = engine_.compared(writer_, *node.right, use, Side::Right);
    return fmt::format("({} {} {})", engine_.compared(writer_, *node.left, use, Side::Left),
                       symbol(node.op), right);
  }

  std::string operator()(const ast::Like& node) const { return engine_.like(writer_, node); }

  std::string operator()(const ast::Between& node) const {
    const std::string high = engine_.compared(writer_, *node.high, Use::Order, Side::Right);
    const std::string low = engine_.compared(writer_, *node.low, Use::Order, Side::Right);
    return fmt::format("({}{} BETWEEN {} AND {})",
                       engine_.compared(writer_, *node.operand, Use::Order, Side::Left),
                       negation(node.negated), low, high);
  }

  std::string operator()(const ast::InList& node) const { return engine_.inList(writer_, node); }
  std::string operator()(const ast::InQuery& node) const { return engine_.inQuery(writer_, node); }

  std::string operator()(const ast::IsNull& node) const {
    return fmt::format("({} IS{} NULL)", bareValue(writer_, *node.operand), negation(node.negated));
  }

  std::string operator()(const ast::Exists& node) const {
    return fmt::format("EXISTS ({})", printQuery(writer_, *node.query, RowOrder::Any));
  }

  std::string operator()(const ast::Not& node) const {
    return fmt::format("(NOT {})", printCondition(writer_, *node.operand));
  }

  std::string operator()(const ast::Logical& node) const { return "(" + chain(node) + ")"; }

 private:
  // A chain of one operator goes flat: engines bound how deep parentheses nest, and a filter may
  // have hundreds of conditions.
  std::string chain(const ast::Logical& node) const {
    const auto* left = std::get_if<ast::Logical>(&node.left->node);
    const bool goesOn = left != nullptr && left->op == node.op;
    std::string text = goesOn ? chain(*left) : printCondition(writer_, *node.left);
    text += node.op == ast::LogicOp::And ? " AND " : " OR ";
    text += printCondition(writer_, *node.right);
    return text;
  }

  Writer& writer_;
  const Engine& engine_;
};

}  // namespace

std::string_view negation(bool isNegated) {
  return isNegated ? " NOT" : "";
}

std::string printCondition(Writer& writer, const ast::Condition& condition) {
  return std::visit(ConditionPrinter(writer), condition.node);
}

}  // namespace tarlo::tsql::print
