// Values: literals, columns, operators and CASE.

#include <fmt/format.h>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/print/printing.h"
#include "tsql/resolve/functions.h"

namespace tarlo::tsql::print {
namespace {

using ast::Expr;

class ExpressionPrinter {
 public:
  ExpressionPrinter(Writer& writer, const Expr& expr)
      : writer_(writer), engine_(writer.engine()), expr_(expr) {}

  std::string operator()(const ast::Literal& node) const {
    return writer_.literal(node, expr_.type, expr_.position);
  }

  std::string operator()(const ast::NullLiteral&) const { return engine_.null(wantedType(expr_)); }

  std::string operator()(const ast::ColumnRef& node) const {
    const auto& scopes = writer_.scopes();
    const auto& scope = scopes[scopes.size() - 1 - static_cast<std::size_t>(node.level)];
    const PrintedSource& source = scope.sources[static_cast<std::size_t>(node.source)];
    const auto index = static_cast<std::size_t>(node.column);
    const std::string table = source.alias.empty() ? "" : source.alias + ".";
    if (!source.table) return fmt::format("{}c{}", table, index + 1);
    // The expression of a computed column names the columns of its own table bare.
    const Column& column = source.table->columns[index];
    return engine_.columnValue(table + quotedName(column.name), column);
  }

  std::string operator()(const ast::Variable& node) const {
    if (text::equalsNoCase(node.name, "@@IDENTITY")) return identity();
    throw StatementError(Refusal::Unsupported, expr_.position,
                         "a variable stands only in DECLARE, EXEC and SELECT of one batch");
  }

  std::string operator()(const ast::Unary& node) const {
    std::string operand = value(writer_, *node.operand);
    if (node.op == ast::UnaryOp::Plus) return operand;
    return engine_.unary(node.op, std::move(operand), expr_.type);
  }

  std::string operator()(const ast::Binary& node) const {
    if (!engine_.infix(expr_).empty()) return "(" + chain(expr_) + ")";
    const std::string left = value(writer_, *node.left);
    return engine_.operation(expr_, left, value(writer_, *node.right));
  }

  std::string operator()(const ast::FunctionCall& node) const {
    return node.name == "SCOPE_IDENTITY" ? identity() : engine_.call(writer_, expr_);
  }

  std::string operator()(const ast::Cast& node) const {
    return engine_.cast(writer_, node, expr_.position);
  }

  std::string operator()(const ast::SimpleCase& node) const {
    std::string text =
        "CASE " + engine_.compared(writer_, *node.operand, Use::Equality, Side::Left);
    for (const auto& branch : node.branches) {
      const std::string then = value(writer_, branch.then);
      text += " WHEN " + engine_.compared(writer_, branch.when, Use::Equality, Side::Listed);
      text += " THEN " + then;
    }
    return text + otherwise(node.otherwise);
  }

  std::string operator()(const ast::SearchedCase& node) const {
    std::string text = "CASE";
    for (const auto& branch : node.branches) {
      text += " WHEN " + printCondition(writer_, branch.when);
      text += " THEN " + value(writer_, branch.then);
    }
    return text + otherwise(node.otherwise);
  }

  std::string operator()(const ast::ScalarSubquery& node) const {
    return engine_.scalarSubquery(*node.query, printQuery(writer_, *node.query, RowOrder::Any));
  }

 private:
  std::string identity() const {
    return writer_.explicitIdentity == nullptr ? engine_.lastIdentity()
                                               : value(writer_, *writer_.explicitIdentity);
  }

  std::string otherwise(const std::optional<ast::Box<Expr>>& expr) const {
    return (expr ? " ELSE " + value(writer_, **expr) : std::string()) + " END";
  }

  // Whether the left side of a node may lose its parentheses: both operators are of one precedence,
  // and nothing converts the left value.
  bool continuesChain(const Expr& expr) const {
    const Expr& left = *std::get<ast::Binary>(expr.node).left;
    if (!std::holds_alternative<ast::Binary>(left.node)) return false;
    const std::string_view inner = engine_.infix(left);
    if (inner.empty() || wantedType(left).kind != left.type.kind) return false;
    const std::string_view outer = engine_.infix(expr);
    const auto isSum = [](std::string_view op) { return op == "+" || op == "-"; };
    return inner == outer || (isSum(inner) && isSum(outer));
  }

  // A chain goes flat: engines bound how deep parentheses nest.
  std::string chain(const Expr& expr) const {
    const auto& node = std::get<ast::Binary>(expr.node);
    std::string text = continuesChain(expr) ? chain(*node.left) : value(writer_, *node.left);
    text += fmt::format(" {} ", engine_.infix(expr));
    text += value(writer_, *node.right);
    return text;
  }

  Writer& writer_;
  const Engine& engine_;
  const Expr& expr_;
};

}  // namespace

Type wantedType(const Expr& expr) {
  return expr.wanted.kind == Kind::Null ? expr.type : expr.wanted;
}

std::string_view commonInfix(const ast::Binary& node) {
  if (node.meaning == ast::Meaning::Concatenate) return "||";
  if (node.meaning != ast::Meaning::Arithmetic) return "";
  switch (node.op) {
    case ast::BinaryOp::Add:
      return "+";
    case ast::BinaryOp::Subtract:
      return "-";
    case ast::BinaryOp::Multiply:
      return "*";
    case ast::BinaryOp::BitAnd:
      return "&";
    case ast::BinaryOp::BitOr:
      return "|";
    default:
      return "";
  }
}

bool isAggregate(const Expr& expr) {
  const auto* call = std::get_if<ast::FunctionCall>(&expr.node);
  const Function* function = call == nullptr ? nullptr : findFunction(call->name);
  return function != nullptr && function->isAggregate;
}

std::string concatenation(const std::vector<std::string>& texts) {
  std::string text;
  for (const std::string& part : texts) {
    text += (text.empty() ? "(" : " || ") + fmt::format("coalesce({}, '')", part);
  }
  return text + ")";
}

std::string bareValue(Writer& writer, const Expr& expr) {
  if (auto grouped = writer.engine().groupValue(writer, expr)) return *std::move(grouped);
  return std::visit(ExpressionPrinter(writer, expr), expr.node);
}

std::string value(Writer& writer, const Expr& expr) {
  const Type wanted = wantedType(expr);
  if (const auto* literal = std::get_if<ast::Literal>(&expr.node)) {
    return writer.literal(*literal, wanted, expr.position);
  }
  return writer.engine().convert(bareValue(writer, expr), expr.type, wanted);
}

std::vector<std::string> values(Writer& writer, const std::vector<Expr>& exprs) {
  std::vector<std::string> texts;
  for (const Expr& expr : exprs) texts.push_back(value(writer, expr));
  return texts;
}

std::string writtenValue(Writer& writer, const Expr& expr, const Column& column) {
  if (const auto* literal = std::get_if<ast::Literal>(&expr.node)) {
    return writer.engine().stored(writer.literal(*literal, column.type, expr.position, column.name),
                                  column);
  }
  return writer.engine().written(bareValue(writer, expr), expr.type, column);
}

}  // namespace tarlo::tsql::print
