// Conditions: both sides of a comparison become one type.

#include <fmt/format.h>

#include "tsql/error.h"
#include "tsql/resolve/conversion.h"
#include "tsql/resolve/rules.h"

namespace tarlo::tsql {
namespace {

class ConditionResolver {
 public:
  explicit ConditionResolver(const Context& context) : context_(context) {}

  void operator()(ast::Comparison& node) { node.common = compare({&*node.left, &*node.right}); }

  void operator()(ast::Like& node) {
    for (ast::Expr* side : {&*node.operand, &*node.pattern}) {
      resolveExpr(context_, *side);
      want(*side, kTextType);
    }
  }

  void operator()(ast::Between& node) {
    node.common = compare({&*node.operand, &*node.low, &*node.high});
  }

  void operator()(ast::InList& node) {
    std::vector<ast::Expr*> all{&*node.operand};
    for (ast::Expr& item : node.items) all.push_back(&item);
    node.common = compare(all);
  }

  void operator()(ast::InQuery& node) {
    resolveExpr(context_, *node.operand);
    const auto columns = nested(*node.query);
    if (columns.size() != 1) {
      throw StatementError(
          Refusal::Rule, node.query->position,
          fmt::format("the query of IN must have one column, not {}", columns.size()));
    }
    node.common = commonType(node.operand->type, columns[0].type);
    want(*node.operand, node.common);
    wantColumn(*node.query, 0, node.common);
  }

  void operator()(ast::IsNull& node) { resolveExpr(context_, *node.operand); }
  void operator()(ast::Exists& node) { nested(*node.query); }
  void operator()(ast::Not& node) { resolveCondition(context_, *node.operand); }
  void operator()(ast::Logical& node) {
    resolveCondition(context_, *node.left);
    resolveCondition(context_, *node.right);
  }

 private:
  Type compare(const std::vector<ast::Expr*>& operands) const {
    Type common;
    for (ast::Expr* operand : operands) {
      resolveExpr(context_, *operand);
      common = commonType(common, operand->type);
    }
    for (ast::Expr* operand : operands) want(*operand, common);
    return common;
  }

  std::vector<ResultColumn> nested(ast::Query& query) const {
    return resolveQuery(context_.batch, &context_.scope, query, QueryUse::Nested);
  }

  const Context& context_;
};

}  // namespace

void resolveCondition(const Context& context, ast::Condition& condition) {
  std::visit(ConditionResolver(context), condition.node);
}

}  // namespace tarlo::tsql
