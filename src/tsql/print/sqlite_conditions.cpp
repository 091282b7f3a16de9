// Conditions. Texts compare under the collation TSQL, which stands at the left operand; other kinds
// compare as they are, so that an index of the column serves.

#include <fmt/format.h>

#include "tsql/print/sqlite_writer.h"

namespace tarlo::tsql::sqlite {
namespace {

std::string_view symbol(ast::ComparisonOp op) {
  constexpr std::string_view kSymbols[] = {"=", "<>", "<", "<=", ">", ">="};
  return kSymbols[static_cast<std::size_t>(op)];
}

class ConditionPrinter {
 public:
  explicit ConditionPrinter(Writer& writer) : writer_(writer) {}

  std::string operator()(const ast::Comparison& node) const {
    return fmt::format("({} {} {})", comparedValue(writer_, *node.left), symbol(node.op),
                       comparedValue(writer_, *node.right));
  }

  std::string operator()(const ast::Like& node) const {
    return fmt::format("({}tsql_like({}, {}))", node.negated ? "NOT " : "",
                       value(writer_, *node.pattern), value(writer_, *node.operand));
  }

  std::string operator()(const ast::Between& node) const {
    return fmt::format("({}{} BETWEEN {} AND {})", comparedValue(writer_, *node.operand),
                       negation(node.negated), comparedValue(writer_, *node.low),
                       comparedValue(writer_, *node.high));
  }

  std::string operator()(const ast::InList& node) const {
    std::vector<std::string> items;
    for (const ast::Expr& item : node.items) items.push_back(value(writer_, item));
    return fmt::format("({}{} IN ({}))", comparedValue(writer_, *node.operand),
                       negation(node.negated), fmt::join(items, ", "));
  }

  std::string operator()(const ast::InQuery& node) const {
    return fmt::format("({}{} IN ({}))", comparedValue(writer_, *node.operand),
                       negation(node.negated), printQuery(writer_, *node.query, RowOrder::Any));
  }

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
  // A chain of one operator goes flat: SQLite bounds how deep parentheses nest, and a filter may
  // have hundreds of conditions.
  std::string chain(const ast::Logical& node) const {
    const auto* left = std::get_if<ast::Logical>(&node.left->node);
    const bool goesOn = left != nullptr && left->op == node.op;
    std::string text = goesOn ? chain(*left) : printCondition(writer_, *node.left);
    text += node.op == ast::LogicOp::And ? " AND " : " OR ";
    text += printCondition(writer_, *node.right);
    return text;
  }

  static std::string_view negation(bool negated) { return negated ? " NOT" : ""; }

  Writer& writer_;
};

}  // namespace

std::string printCondition(Writer& writer, const ast::Condition& condition) {
  return std::visit(ConditionPrinter(writer), condition.node);
}

}  // namespace tarlo::tsql::sqlite
