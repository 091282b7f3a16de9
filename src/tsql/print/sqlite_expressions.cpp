// Values: literals, columns, operators and CASE.

#include <fmt/format.h>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/print/sqlite_writer.h"

namespace tarlo::tsql::sqlite {
namespace {

using ast::BinaryOp;
using ast::Expr;
using ast::Meaning;

// The operator between the operands; "" where a node is printed as a call.
std::string_view infix(const ast::Binary& node) {
  if (node.meaning == Meaning::Concatenate) return "||";
  if (node.meaning != Meaning::Arithmetic) return "";
  switch (node.op) {
    case BinaryOp::Add:
      return "+";
    case BinaryOp::Subtract:
      return "-";
    case BinaryOp::Multiply:
      return "*";
    case BinaryOp::BitAnd:
      return "&";
    case BinaryOp::BitOr:
      return "|";
    default:
      return "";
  }
}

// Whether `left op right` may lose the parentheses round its left side: both operators are of one
// precedence, and nothing converts the left value.
bool continuesChain(const ast::Binary& node) {
  const auto* left = std::get_if<ast::Binary>(&node.left->node);
  if (left == nullptr || infix(*left).empty()) return false;
  const Kind wanted = node.left->wanted.kind;
  if (wanted != Kind::Null && wanted != node.left->type.kind) return false;
  const auto isSum = [](std::string_view op) { return op == "+" || op == "-"; };
  return infix(*left) == infix(node) || (isSum(infix(*left)) && isSum(infix(node)));
}

class ExpressionPrinter {
 public:
  ExpressionPrinter(Writer& writer, const Expr& expr) : writer_(writer), expr_(expr) {}

  std::string operator()(const ast::Literal& node) const {
    return writer_.literal(node, expr_.type, expr_.position);
  }

  std::string operator()(const ast::NullLiteral&) const { return "NULL"; }

  std::string operator()(const ast::ColumnRef& node) const {
    const auto& scopes = writer_.scopes();
    const auto& scope = scopes[scopes.size() - 1 - static_cast<std::size_t>(node.level)];
    const PrintedSource& source = scope[static_cast<std::size_t>(node.source)];
    const auto column = static_cast<std::size_t>(node.column);
    const std::string name = source.table ? quotedName(source.table->columns[column].name)
                                          : fmt::format("c{}", column + 1);
    // The expression of a computed column names the columns of its own table bare.
    return source.alias.empty() ? name : source.alias + "." + name;
  }

  std::string operator()(const ast::Variable& node) const {
    if (text::equalsNoCase(node.name, "@@IDENTITY")) return "last_insert_rowid()";
    throw StatementError(Refusal::Unsupported, expr_.position,
                         "a variable stands only in DECLARE, EXEC and SELECT of one batch");
  }

  std::string operator()(const ast::Unary& node) const {
    const std::string operand = value(writer_, *node.operand);
    if (node.op == ast::UnaryOp::Plus) return operand;
    return fmt::format("({} {})", node.op == ast::UnaryOp::Minus ? "-" : "~", operand);
  }

  std::string operator()(const ast::Binary& node) const {
    if (!infix(node).empty()) return "(" + chain(node) + ")";
    const std::string left = value(writer_, *node.left);
    const std::string right = value(writer_, *node.right);
    switch (node.meaning) {
      case Meaning::DatePlusDays:
        return call("tsql_date_plus", {left, right});
      case Meaning::DateMinusDays:
        return fmt::format("tsql_date_plus({}, (- {}))", left, right);
      case Meaning::DaysBetween:
        return call("tsql_days_between", {left, right});
      default:
        return arithmetic(node, left, right);
    }
  }

  std::string operator()(const ast::FunctionCall& node) const {
    return printCall(writer_, node, expr_);
  }

  std::string operator()(const ast::Cast& node) const {
    return printCast(writer_, node, expr_.position);
  }

  std::string operator()(const ast::SimpleCase& node) const {
    std::string text = "CASE " + comparedValue(writer_, *node.operand);
    for (const auto& branch : node.branches) {
      text += " WHEN " + value(writer_, branch.when) + " THEN " + value(writer_, branch.then);
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
    return printScalarSubquery(writer_, *node.query);
  }

 private:
  std::string otherwise(const std::optional<ast::Box<Expr>>& expr) const {
    return (expr ? " ELSE " + value(writer_, **expr) : std::string()) + " END";
  }

  // A chain goes flat: SQLite bounds how deep parentheses nest.
  // Whole numbers are 64 bits wide here, 32 on the other engine: a result between the two is given,
  // not refused.
  std::string chain(const ast::Binary& node) const {
    std::string text = continuesChain(node) ? chain(std::get<ast::Binary>(node.left->node))
                                            : value(writer_, *node.left);
    text += fmt::format(" {} ", infix(node));
    text += value(writer_, *node.right);
    return text;
  }

  std::string arithmetic(const ast::Binary& node, const std::string& left,
                         const std::string& right) const {
    const bool isInt = expr_.type.kind == Kind::Int;
    // A literal divisor has been tried: it is not zero. Inline integers divide as SQLite does.
    const bool isSafe = std::holds_alternative<ast::Literal>(node.right->node);
    switch (node.op) {
      case BinaryOp::Divide:
        if (isSafe && isInt) return fmt::format("({} / {})", left, right);
        return call(isInt ? "tsql_idiv" : "tsql_div", {left, right});
      case BinaryOp::Modulo:
        if (isSafe && isInt) return fmt::format("({} % {})", left, right);
        return call(isInt ? "tsql_imod" : "tsql_mod", {left, right});
      default:
        return call("tsql_xor", {left, right});
    }
  }

  Writer& writer_;
  const Expr& expr_;
};

// Sums and products of decimals carry the error of the doubles; a stored decimal and a literal do
// not. Rounded to their scale they compare as decimals do.
bool needsRounding(const Expr& expr) {
  if (expr.type.kind != Kind::Decimal) return false;
  if (const auto* function = std::get_if<ast::FunctionCall>(&expr.node)) {
    return function->name == "SUM" || function->name == "AVG";
  }
  return std::holds_alternative<ast::Binary>(expr.node);
}

}  // namespace

std::string bareValue(Writer& writer, const Expr& expr) {
  return std::visit(ExpressionPrinter(writer, expr), expr.node);
}

std::string value(Writer& writer, const Expr& expr) {
  const Type wanted = expr.wanted.kind == Kind::Null ? expr.type : expr.wanted;
  if (const auto* literal = std::get_if<ast::Literal>(&expr.node)) {
    return writer.literal(*literal, wanted, expr.position);
  }
  return convert(bareValue(writer, expr), expr.type, wanted);
}

std::string collated(std::string text, Type type) {
  return type.kind == Kind::Text ? text + " COLLATE TSQL" : text;
}

std::string comparedValue(Writer& writer, const Expr& expr) {
  const Type type = expr.wanted.kind == Kind::Null ? expr.type : expr.wanted;
  std::string text = value(writer, expr);
  if (type.kind == Kind::Decimal && needsRounding(expr)) {
    text = fmt::format("tsql_round({}, {}, 0)", text, expr.type.scale);
  }
  return collated(std::move(text), type);
}

std::string columnValue(Writer& writer, const Expr& expr, const Column& column) {
  if (const auto* literal = std::get_if<ast::Literal>(&expr.node)) {
    return writer.literal(*literal, column.type, expr.position, column.name);
  }
  return writtenValue(bareValue(writer, expr), expr.type, column);
}

}  // namespace tarlo::tsql::sqlite
