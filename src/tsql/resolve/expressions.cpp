// Literals, columns, variables and CASE; the other expressions by their rules.

#include <fmt/format.h>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/resolve/conversion.h"
#include "tsql/resolve/rules.h"

namespace tarlo::tsql {
namespace {

using ast::Expr;
using ast::LiteralClass;

constexpr std::size_t kInt64Digits = 18;
constexpr std::size_t kMostDigits = 38;
constexpr std::size_t kMostHexDigits = 16;

[[noreturn]] void refuseNumber(const Expr& expr, const ast::Literal& literal) {
  throw StatementError(Refusal::Kind, expr.position,
                       fmt::format("number {} is too long", literal.text));
}

// An integer beyond eighteen digits is a decimal. Such ones and hexadecimal ones stay in the text.
Type integerType(const Expr& expr, ast::Literal& literal) {
  const std::string& text = literal.text;
  if (text.starts_with("0x") || text.starts_with("0X")) {
    if (text.size() > 2 + kMostHexDigits) refuseNumber(expr, literal);
    literal.fixed = true;
    return kIntType;
  }
  if (text.size() <= kInt64Digits) return kIntType;
  if (text.size() > kMostDigits) refuseNumber(expr, literal);
  literal.fixed = true;
  return decimalType(static_cast<std::uint8_t>(text.size()), 0);
}

Type pointType(const Expr& expr, const ast::Literal& literal) {
  const std::string_view text = literal.text;
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::size_t leadingZeros = std::min(text.find_first_not_of('0'), point);
  const std::size_t scale = point == text.size() ? 0 : text.size() - point - 1;
  const std::size_t precision = std::max<std::size_t>(point - leadingZeros + scale, 1);
  if (precision > kMostDigits) refuseNumber(expr, literal);
  return decimalType(static_cast<std::uint8_t>(precision), static_cast<std::uint8_t>(scale));
}

Type literalType(const Expr& expr, ast::Literal& literal) {
  switch (literal.literalClass) {
    case LiteralClass::Integer:
      return integerType(expr, literal);
    case LiteralClass::Decimal:
      return pointType(expr, literal);
    case LiteralClass::Float:
      return kFloatType;
    case LiteralClass::Text:
      break;
  }
  // Without its length: one translation serves texts of every length.
  return kTextType;
}

Type variableType(const Context& context, const Expr& expr, const ast::Variable& variable) {
  if (text::equalsNoCase(variable.name, "@@IDENTITY")) return kIntType;
  const auto found = context.batch.variables.find(text::upperName(variable.name));
  if (found != context.batch.variables.end()) return found->second;
  throw StatementError(Refusal::Name, expr.position,
                       fmt::format("variable {} is not declared", variable.name));
}

// Converts what the branches give to their common type.
template <class Case>
Type resolveResults(const Context& context, Case& node) {
  Type common;
  for (auto& branch : node.branches) {
    resolveExpr(context, branch.then);
    common = commonType(common, branch.then.type);
  }
  if (node.otherwise) {
    resolveExpr(context, **node.otherwise);
    common = commonType(common, (*node.otherwise)->type);
  }
  for (auto& branch : node.branches) want(branch.then, common);
  if (node.otherwise) want(**node.otherwise, common);
  return common;
}

Type resolveCase(const Context& context, ast::SimpleCase& node) {
  resolveExpr(context, *node.operand);
  Type common = node.operand->type;
  for (auto& branch : node.branches) {
    resolveExpr(context, branch.when);
    common = commonType(common, branch.when.type);
  }
  want(*node.operand, common);
  for (auto& branch : node.branches) want(branch.when, common);
  return resolveResults(context, node);
}

Type resolveCase(const Context& context, ast::SearchedCase& node) {
  for (auto& branch : node.branches) resolveCondition(context, branch.when);
  return resolveResults(context, node);
}

Type resolveScalar(const Context& context, const Expr& expr, ast::ScalarSubquery& node) {
  const auto columns = resolveQuery(context.batch, &context.scope, *node.query, QueryUse::Nested);
  if (columns.size() != 1) {
    throw StatementError(Refusal::Rule, expr.position,
                         fmt::format("a query that stands for a value must have one column, not {}",
                                     columns.size()));
  }
  return columns[0].type;
}

void resolveNode(const Context& context, Expr& expr) {
  std::visit(
      [&](auto& node) {
        using T = std::remove_cvref_t<decltype(node)>;
        if constexpr (std::is_same_v<T, ast::Literal>) {
          expr.type = literalType(expr, node);
        } else if constexpr (std::is_same_v<T, ast::NullLiteral>) {
          expr.type = Type{};
        } else if constexpr (std::is_same_v<T, ast::ColumnRef>) {
          expr.type = context.scope.resolve(node, expr.position);
        } else if constexpr (std::is_same_v<T, ast::Variable>) {
          expr.type = variableType(context, expr, node);
        } else if constexpr (std::is_same_v<T, ast::Unary>) {
          resolveExpr(context, *node.operand);
          resolveUnary(expr);
        } else if constexpr (std::is_same_v<T, ast::Binary>) {
          resolveExpr(context, *node.left);
          resolveExpr(context, *node.right);
          resolveBinary(expr);
        } else if constexpr (std::is_same_v<T, ast::FunctionCall>) {
          resolveCall(context, expr);
        } else if constexpr (std::is_same_v<T, ast::Cast>) {
          resolveCast(context, expr);
        } else if constexpr (std::is_same_v<T, ast::ScalarSubquery>) {
          expr.type = resolveScalar(context, expr, node);
        } else {
          expr.type = resolveCase(context, node);
        }
      },
      expr.node);
}

}  // namespace

void resolveExpr(const Context& context, ast::Expr& expr) {
  resolveNode(context, expr);
  expr.wanted = expr.type;
}

}  // namespace tarlo::tsql
