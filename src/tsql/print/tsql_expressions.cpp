#include "tsql/print/tsql_writer.h"

namespace tarlo::tsql {
namespace {

Level levelOf(const ast::Expr& expr) {
  if (const auto* binary = std::get_if<ast::Binary>(&expr.node)) {
    return findEntry(kBinaryOperators, binary->op, &BinaryEntry::op)->level;
  }
  if (const auto* unary = std::get_if<ast::Unary>(&expr.node)) {
    return findEntry(kUnaryOperators, unary->op, &UnaryEntry::op)->level;
  }
  return kPrimary;
}

Level levelOf(const ast::Condition& condition) {
  if (const auto* logical = std::get_if<ast::Logical>(&condition.node)) {
    return findEntry(kLogicOperators, logical->op, &LogicEntry::op)->level;
  }
  return std::holds_alternative<ast::Not>(condition.node) ? kNot : kPredicate;
}

constexpr Level tighter(Level level) {
  return static_cast<Level>(level + 1);
}

}  // namespace

void TsqlWriter::expr(const ast::Expr& expr, Level least) {
  const bool open = levelOf(expr) < least;
  if (open) text("(");
  std::visit([this](const auto& inner) { node(inner); }, expr.node);
  if (open) text(")");
}

void TsqlWriter::condition(const ast::Condition& condition, Level least) {
  const bool open = levelOf(condition) < least;
  if (open) text("(");
  std::visit([this](const auto& inner) { node(inner); }, condition.node);
  if (open) text(")");
}

void TsqlWriter::exprs(const std::vector<ast::Expr>& items) {
  list(items, [this](const ast::Expr& item) { expr(item); });
}

void TsqlWriter::quoted(std::string_view value) {
  text("'");
  for (const char c : value) {
    if (c == '\'') text("'");
    out_ += c;
  }
  text("'");
}

void TsqlWriter::node(const ast::Literal& literal) {
  if (literal.literalClass == ast::LiteralClass::Text) return quoted(literal.text);
  text(literal.text);
}

void TsqlWriter::node(const ast::NullLiteral&) {
  text("NULL");
}

void TsqlWriter::node(const ast::ColumnRef& column) {
  if (!column.table.empty()) {
    name(column.table);
    text(".");
  }
  name(column.name);
}

void TsqlWriter::node(const ast::Variable& variable) {
  text(variable.name);
}

void TsqlWriter::node(const ast::Unary& unary) {
  const UnaryEntry& entry = *findEntry(kUnaryOperators, unary.op, &UnaryEntry::op);
  text(entry.text);
  const std::size_t from = out_.size();
  expr(*unary.operand, entry.level);
  // Two signs without a blank would open a comment.
  if (out_[from] == '-') out_.insert(from, " ");
}

void TsqlWriter::node(const ast::Binary& binary) {
  const BinaryEntry& entry = *findEntry(kBinaryOperators, binary.op, &BinaryEntry::op);
  expr(*binary.left, entry.level);
  text(" ");
  text(entry.text);
  text(" ");
  expr(*binary.right, tighter(entry.level));
}

void TsqlWriter::node(const ast::FunctionCall& call) {
  text(call.name);
  text("(");
  if (call.star) text("*");
  if (call.distinct) text("DISTINCT ");
  text(call.part);
  if (!call.part.empty() && !call.arguments.empty()) text(", ");
  exprs(call.arguments);
  text(")");
}

void TsqlWriter::node(const ast::Cast& cast) {
  if (cast.isConvert) {
    text("CONVERT(");
    type(cast.typeName, cast.typeSizes);
    text(", ");
    expr(*cast.operand);
    if (cast.style != -1) text(", " + std::to_string(cast.style));
  } else {
    text("CAST(");
    expr(*cast.operand);
    text(" AS ");
    type(cast.typeName, cast.typeSizes);
  }
  text(")");
}

void TsqlWriter::node(const ast::SimpleCase& simple) {
  text("CASE ");
  expr(*simple.operand);
  for (const auto& branch : simple.branches) {
    text(" WHEN ");
    expr(branch.when);
    text(" THEN ");
    expr(branch.then);
  }
  if (simple.otherwise) {
    text(" ELSE ");
    expr(**simple.otherwise);
  }
  text(" END");
}

void TsqlWriter::node(const ast::SearchedCase& searched) {
  text("CASE");
  for (const auto& branch : searched.branches) {
    text(" WHEN ");
    condition(branch.when);
    text(" THEN ");
    expr(branch.then);
  }
  if (searched.otherwise) {
    text(" ELSE ");
    expr(**searched.otherwise);
  }
  text(" END");
}

void TsqlWriter::node(const ast::ScalarSubquery& subquery) {
  text("(");
  query(*subquery.query);
  text(")");
}

void TsqlWriter::node(const ast::Comparison& comparison) {
  expr(*comparison.left, kAdditive);
  text(" ");
  text(findEntry(kComparisons, comparison.op, &ComparisonEntry::op)->text);
  text(" ");
  expr(*comparison.right, kAdditive);
}

void TsqlWriter::node(const ast::Like& like) {
  expr(*like.operand, kAdditive);
  text(like.negated ? " NOT LIKE " : " LIKE ");
  expr(*like.pattern, kAdditive);
}

void TsqlWriter::node(const ast::Between& between) {
  expr(*between.operand, kAdditive);
  text(between.negated ? " NOT BETWEEN " : " BETWEEN ");
  expr(*between.low, kAdditive);
  text(" AND ");
  expr(*between.high, kAdditive);
}

void TsqlWriter::node(const ast::InList& in) {
  expr(*in.operand, kAdditive);
  text(in.negated ? " NOT IN (" : " IN (");
  exprs(in.items);
  text(")");
}

void TsqlWriter::node(const ast::InQuery& in) {
  expr(*in.operand, kAdditive);
  text(in.negated ? " NOT IN (" : " IN (");
  query(*in.query);
  text(")");
}

void TsqlWriter::node(const ast::IsNull& isNull) {
  expr(*isNull.operand, kAdditive);
  text(isNull.negated ? " IS NOT NULL" : " IS NULL");
}

void TsqlWriter::node(const ast::Exists& exists) {
  text("EXISTS (");
  query(*exists.query);
  text(")");
}

void TsqlWriter::node(const ast::Not& negation) {
  text("NOT ");
  condition(*negation.operand, kNot);
}

void TsqlWriter::node(const ast::Logical& logical) {
  const LogicEntry& entry = *findEntry(kLogicOperators, logical.op, &LogicEntry::op);
  condition(*logical.left, entry.level);
  text(" ");
  text(entry.text);
  text(" ");
  condition(*logical.right, tighter(entry.level));
}

}  // namespace tarlo::tsql
