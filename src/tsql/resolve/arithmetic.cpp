// Operators: what + means between its operands, and the types of results.

#include <fmt/format.h>

#include "tsql/error.h"
#include "tsql/resolve/children.h"
#include "tsql/resolve/conversion.h"
#include "tsql/resolve/literal_value.h"
#include "tsql/resolve/rules.h"

namespace tarlo::tsql {
namespace {

using ast::Binary;
using ast::BinaryOp;
using ast::Expr;
using ast::Meaning;

constexpr int kKeptScale = 6;

std::string_view symbol(BinaryOp op) {
  constexpr std::string_view kSymbols[] = {"+", "-", "*", "/", "%", "&", "|", "^"};
  return kSymbols[static_cast<std::size_t>(op)];
}

[[noreturn]] void refuse(const Expr& expr, const Binary& node, std::string_view reason = {}) {
  throw StatementError(
      reason.empty() ? Refusal::Kind : Refusal::Unsupported, expr.position,
      fmt::format("operator {} does not take {} and {}{}", symbol(node.op),
                  describe(node.left->type.kind), describe(node.right->type.kind), reason));
}

// An integer literal counts with its own digits, another integer with ten.
Type decimalOperand(const Expr& expr) {
  const auto* literal = std::get_if<ast::Literal>(&expr.node);
  if (literal && literal->literalClass == ast::LiteralClass::Integer) {
    const auto digits = std::min<std::size_t>(literal->text.size(), kMaxPrecision);
    return decimalType(static_cast<std::uint8_t>(digits), 0);
  }
  return asDecimal(expr.wanted);
}

// Precision and scale as the server computes them: too many digits cost scale, down to six.
Type decimalResult(Expr& expr, const Binary& node) {
  const Type a = decimalOperand(*node.left);
  const Type b = decimalOperand(*node.right);
  int scale = std::max(a.scale, b.scale);
  int whole = std::max(a.precision - a.scale, b.precision - b.scale);
  if (node.op == BinaryOp::Multiply) {
    scale = a.scale + b.scale;
    whole = a.precision + b.precision + 1 - scale;
  } else if (node.op == BinaryOp::Divide) {
    scale = std::max(kKeptScale, a.scale + b.precision + 1);
    whole = a.precision - a.scale + b.scale;
  } else if (node.op == BinaryOp::Modulo) {
    whole = std::min(a.precision - a.scale, b.precision - b.scale);
  } else {
    whole += 1;
  }
  if (whole + scale > kMaxPrecision || node.op == BinaryOp::Divide) fixLiterals(expr);
  if (whole + scale > kMaxPrecision) {
    scale = std::max(std::min(scale, kKeptScale), std::min<int>(scale, kMaxPrecision - whole));
  }
  const int precision = std::min(std::max(whole + scale, 1), int{kMaxPrecision});
  return decimalType(static_cast<std::uint8_t>(precision), static_cast<std::uint8_t>(scale));
}

void checkDivisor(Expr& divisor) {
  fixLiterals(divisor);
  const auto* literal = std::get_if<ast::Literal>(&divisor.node);
  if (!literal) return;
  const auto value = parseNumber(literal->text);
  if (value && *value == 0) {
    throw StatementError(Refusal::Kind, divisor.position, "division by zero");
  }
}

// A text or a NULL beside a number becomes a number of the same kind.
void wantNumber(Expr& operand, Type other) {
  if (!isNumeric(operand.type)) want(operand, isNumeric(other) ? other : kIntType);
}

void resolveNumbers(Expr& expr, Binary& node) {
  wantNumber(*node.left, node.right->type);
  wantNumber(*node.right, node.left->type);
  const bool bits =
      node.op == BinaryOp::BitAnd || node.op == BinaryOp::BitOr || node.op == BinaryOp::BitXor;
  const Kind kind = std::max(node.left->wanted.kind, node.right->wanted.kind);
  if (bits && kind != Kind::Int) refuse(expr, node);
  if (node.op == BinaryOp::Divide || node.op == BinaryOp::Modulo) checkDivisor(*node.right);
  node.meaning = Meaning::Arithmetic;
  expr.type = kind == Kind::Decimal ? decimalResult(expr, node) : Type{kind};
}

void resolveDates(Expr& expr, Binary& node) {
  if (node.op != BinaryOp::Add && node.op != BinaryOp::Subtract) refuse(expr, node);
  const bool add = node.op == BinaryOp::Add;
  if (add && node.left->type.kind != Kind::Date) std::swap(node.left, node.right);
  const Kind left = node.left->type.kind;
  const Kind right = node.right->type.kind;
  if (left == Kind::Date && right == Kind::Date && !add) {
    node.meaning = Meaning::DaysBetween;
    expr.type = kFloatType;
    return;
  }
  if (left != Kind::Date || right == Kind::Date || right == Kind::Text) {
    refuse(expr, node, ": use DATEADD or DATEDIFF");
  }
  if (right == Kind::Null) want(*node.right, kIntType);
  node.meaning = add ? Meaning::DatePlusDays : Meaning::DateMinusDays;
  expr.type = kDateType;
}

bool isTextOrNull(Type type) {
  return type.kind == Kind::Text || type.kind == Kind::Null;
}

}  // namespace

void resolveUnary(ast::Expr& expr) {
  auto& node = std::get<ast::Unary>(expr.node);
  const Kind kind = node.operand->type.kind;
  const bool plus = node.op == ast::UnaryOp::Plus;
  const bool taken = plus || kind == Kind::Null || kind == Kind::Int ||
                     (node.op == ast::UnaryOp::Minus && isNumeric(kind));
  if (!taken) {
    throw StatementError(Refusal::Kind, expr.position,
                         fmt::format("operator {} does not take {}",
                                     node.op == ast::UnaryOp::Minus ? "-" : "~", describe(kind)));
  }
  expr.type = node.operand->type;
}

void resolveBinary(ast::Expr& expr) {
  auto& node = std::get<Binary>(expr.node);
  const Type left = node.left->type;
  const Type right = node.right->type;
  if (left.kind == Kind::Date || right.kind == Kind::Date) return resolveDates(expr, node);
  const bool texts = isTextOrNull(left) && isTextOrNull(right);
  if (texts && (left.kind == Kind::Text || right.kind == Kind::Text)) {
    if (node.op != BinaryOp::Add) refuse(expr, node);
    node.meaning = Meaning::Concatenate;
    expr.type = kTextType;
    return;
  }
  resolveNumbers(expr, node);
}

}  // namespace tarlo::tsql
