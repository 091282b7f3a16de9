#include "tsql/print/postgresql_engine.h"

#include <fmt/format.h>

#include <algorithm>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/print/printing.h"
#include "tsql/resolve/resolver.h"

namespace tarlo::tsql::print {
namespace {

using ast::BinaryOp;
using ast::Expr;
using ast::Meaning;

std::string folded(const std::string& text) {
  return fmt::format("tarlo.fold({})", text);
}

// A literal is worked out once for the statement, not for each row.
std::string once(Writer& writer, const Expr& expr, const std::string& text) {
  return writer.lifts(expr) ? fmt::format("(SELECT {})", text) : text;
}

std::string ordered(const std::string& text) {
  return text + " COLLATE tarlo.chinese";
}

// PostgreSQL's own scale of an operator's result, where it may be more than the language's.
int naturalScale(const ast::Binary& node) {
  const int left = wantedType(*node.left).scale;
  const int right = wantedType(*node.right).scale;
  return node.op == BinaryOp::Multiply ? left + right : std::max(left, right);
}

// Whether the result has to be rounded to the scale of its type.
bool isRounded(const Expr& binary) {
  const auto& node = std::get<ast::Binary>(binary.node);
  if (node.meaning != Meaning::Arithmetic || binary.type.kind != Kind::Decimal) return false;
  return node.op == BinaryOp::Divide || naturalScale(node) > binary.type.scale;
}

std::string_view sign(const ast::Binary& node) {
  switch (node.op) {
    case BinaryOp::Divide:
      return "/";
    case BinaryOp::Modulo:
      return "%";
    case BinaryOp::BitXor:
      return "#";
    default:
      return commonInfix(node);
  }
}

// The expression as one of the query `depth` scopes outward, if it is a column of it.
std::optional<Expr> seenFrom(const Expr& expr, std::size_t depth) {
  if (depth == 0) return expr;
  const auto* column = std::get_if<ast::ColumnRef>(&expr.node);
  if (column == nullptr || column->level != static_cast<int>(depth)) return {};
  Expr moved = expr;
  std::get<ast::ColumnRef>(moved.node).level = 0;
  return moved;
}

std::string quotedNames(const std::string& left, const std::string& right) {
  return fmt::format("{}, {}", quoted(left), quoted(right));
}

}  // namespace

std::string PostgresqlEngine::parameter(std::size_t number) const {
  return fmt::format("${}", number);
}

std::string PostgresqlEngine::constant(const ast::Literal& literal, const Parameter& wanted,
                                       Position position) const {
  const std::string text = literalText(literal.literalClass, literal.text, wanted, position);
  Kind kind = wanted.target.kind;
  if (kind == Kind::Null) kind = kindOf(literal.literalClass);
  const bool isNegative = text.starts_with('-');
  if (kind == Kind::Int) return isNegative ? "(" + text + ")" : text;
  if (kind == Kind::Decimal && !isNegative && text.find('.') != std::string::npos) return text;
  return fmt::format("{}::{}", quoted(text),
                     kind == Kind::Date ? "timestamp" : postgresqlCast(kind));
}

std::string PostgresqlEngine::unary(ast::UnaryOp op, std::string operand, Type type) const {
  if (type.kind == Kind::Null) return operand;
  return fmt::format("({} {})", op == ast::UnaryOp::Minus ? "-" : "~", operand);
}

std::string_view PostgresqlEngine::infix(const Expr& binary) const {
  const auto& node = std::get<ast::Binary>(binary.node);
  if (node.meaning == Meaning::Concatenate) return commonInfix(node);
  const bool isFloatRemainder = node.op == BinaryOp::Modulo && binary.type.kind == Kind::Float;
  if (node.meaning != Meaning::Arithmetic || isFloatRemainder || isRounded(binary)) return "";
  return sign(node);
}

std::string PostgresqlEngine::operation(const Expr& binary, const std::string& left,
                                        const std::string& right) const {
  const auto& node = std::get<ast::Binary>(binary.node);
  const Kind kind = wantedType(*node.right).kind;
  switch (node.meaning) {
    case Meaning::DatePlusDays:
      return postgresqlDatePlus(left, right, kind);
    case Meaning::DateMinusDays:
      return postgresqlDatePlus(left, fmt::format("(- {})", right), kind);
    case Meaning::DaysBetween:
      return fmt::format("(extract(epoch from {} - {}) / 86400)::float8", left, right);
    default:
      break;
  }
  if (!isRounded(binary)) {
    return fmt::format("tarlo.float_remainder({}::float8, {}::float8)", left, right);
  }
  const int scale = binary.type.scale;
  // A quotient has the digits of its dividend at least.
  const bool widens = node.op == BinaryOp::Divide && wantedType(*node.left).scale <= scale;
  const std::string dividend = widens ? fmt::format("round({}, {})", left, scale) : left;
  return fmt::format("round({} {} {}, {})", dividend, sign(node), right, scale);
}

std::optional<std::string> PostgresqlEngine::groupValue(Writer& writer, const Expr& expr) const {
  if (expr.type.kind != Kind::Text || std::holds_alternative<ast::Literal>(expr.node)) return {};
  auto& scopes = writer.scopes();
  for (std::size_t depth = 0; depth < scopes.size(); ++depth) {
    PrintedScope& scope = scopes[scopes.size() - 1 - depth];
    const ast::QuerySpec* grouped = scope.grouped;
    if (grouped == nullptr) continue;
    const std::optional<Expr> seen = seenFrom(expr, depth);
    if (!seen || std::none_of(grouped->groupBy.begin(), grouped->groupBy.end(),
                              [&](const Expr& item) { return sameExpression(item, *seen); })) {
      continue;
    }
    scope.grouped = nullptr;
    std::string text = fmt::format("max({} COLLATE \"C\")", bareValue(writer, expr));
    scopes[scopes.size() - 1 - depth].grouped = grouped;
    return text;
  }
  return {};
}

std::string PostgresqlEngine::compared(Writer& writer, const Expr& expr, Use use, Side side) const {
  const std::string text = value(writer, expr);
  const Type type = wantedType(expr);
  if (type.kind != Kind::Text) return text;
  if (use == Use::Sort) return sortKey(text, type);
  const std::string key = once(writer, expr, folded(text));
  // On both sides: one of them may have been put together under another collation.
  if (use != Use::Order || (side != Side::Left && writer.lifts(expr))) return key;
  return side == Side::Left ? ordered(key) : "(" + ordered(key) + ")";
}

std::string PostgresqlEngine::like(Writer& writer, const ast::Like& node) const {
  const std::string pattern = once(
      writer, *node.pattern, fmt::format("tarlo.like_regex({})", value(writer, *node.pattern)));
  return fmt::format("(tarlo.fold_characters({}) {} {})", value(writer, *node.operand),
                     node.negated ? "!~" : "~", pattern);
}

// Texts that are all literals are folded once, in an array that an index is searched for.
std::string PostgresqlEngine::inList(Writer& writer, const ast::InList& node) const {
  const std::string operand = compared(writer, *node.operand, Use::Equality, Side::Left);
  const bool isText = node.common.kind == Kind::Text && node.items.size() > 1;
  if (isText && std::all_of(node.items.begin(), node.items.end(),
                            [&](const Expr& item) { return writer.lifts(item); })) {
    return fmt::format("({} {} (ARRAY(SELECT tarlo.fold(x) FROM unnest(ARRAY[{}]) AS x)))", operand,
                       node.negated ? "<> ALL" : "= ANY",
                       fmt::join(values(writer, node.items), ", "));
  }
  std::vector<std::string> items;
  for (const Expr& item : node.items) {
    items.push_back(compared(writer, item, Use::Equality, Side::Listed));
  }
  return fmt::format("({}{} IN ({}))", operand, negation(node.negated), fmt::join(items, ", "));
}

std::string PostgresqlEngine::inQuery(Writer& writer, const ast::InQuery& node) const {
  const std::string operand = compared(writer, *node.operand, Use::Equality, Side::Left);
  std::string query = printQuery(writer, *node.query, RowOrder::Any);
  if (node.common.kind == Kind::Text) {
    query = fmt::format("SELECT tarlo.fold(c1) FROM ({}){}", query, writer.derivedAlias());
  }
  return fmt::format("({}{} IN ({}))", operand, negation(node.negated), query);
}

std::string PostgresqlEngine::selected(Writer& writer, const Expr& expr, bool) const {
  return value(writer, expr);
}

std::string PostgresqlEngine::paging(const std::string& fetch, const std::string& offset) const {
  const std::string limit = fetch.empty() ? "" : " LIMIT " + fetch;
  return limit + " OFFSET " + offset;
}

std::string PostgresqlEngine::distinctItem(const std::string& name, Type type) const {
  return type.kind == Kind::Text ? fmt::format("max({} COLLATE \"C\")", name) : name;
}

std::string PostgresqlEngine::distinctGroup(const std::string& name, Type type) const {
  return type.kind == Kind::Text ? folded(name) : name;
}

std::string PostgresqlEngine::sortKey(std::string text, Type type) const {
  return type.kind == Kind::Text ? ordered(fmt::format("rtrim({})", text)) : text;
}

// NULL is the least of all values.
std::string PostgresqlEngine::direction(bool isDescending, bool mayBeNull) const {
  if (!mayBeNull) return isDescending ? " DESC" : "";
  return isDescending ? " DESC NULLS LAST" : " NULLS FIRST";
}

std::string PostgresqlEngine::keyOrder(const std::string& name, const Column& column) const {
  return sortKey(columnValue(name, column), column.type);
}

std::string PostgresqlEngine::newName(const std::string& typed, Position position) const {
  constexpr std::size_t kMostBytes = 63;
  if (typed.size() > kMostBytes) {
    throw StatementError(Refusal::Limit, position,
                         fmt::format("the name {} has more than {} bytes", typed, kMostBytes));
  }
  return text::foldedName(typed);
}

std::string PostgresqlEngine::columnType(const ast::ColumnDefinition& definition, Type type,
                                         bool) const {
  return postgresqlType(type, definition.typeName);
}

std::string_view PostgresqlEngine::identityType() const {
  return "integer GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY";
}

// Indexes serve what statements ask for: equality of texts, and NULL before all other values.
std::string PostgresqlEngine::indexPart(const Column& column, bool isDescending) const {
  std::string name = quotedName(column.name);
  if (column.type.kind == Kind::Text) name = folded(name);
  return name + direction(isDescending, column.isNullable);
}

// A key of texts is one whatever their case.
std::string PostgresqlEngine::keyIndex(const Table& table) const {
  std::vector<std::string> parts;
  bool hasText = false;
  for (const std::size_t index : table.key) {
    hasText = hasText || table.columns[index].type.kind == Kind::Text;
    parts.push_back(indexPart(table.columns[index], false));
  }
  if (!hasText) return {};
  return fmt::format("CREATE UNIQUE INDEX ON {} ({})", quotedName(table.name),
                     fmt::join(parts, ", "));
}

std::string PostgresqlEngine::identityNotice(const Table& table, const Column& column,
                                             const std::vector<std::string>& stored) const {
  return fmt::format("SELECT tarlo.reserve_identity({}, GREATEST({})) AS c1",
                     quotedNames(table.name, column.name), fmt::join(stored, ", "));
}

// The procedure is the host's: the step gives its inputs.
std::string PostgresqlEngine::execute(const ast::Execute& execute,
                                      const std::vector<std::string>& inputs,
                                      Translation& translation) const {
  translation.procedure = execute.procedure;
  std::string text = "SELECT";
  std::size_t count = 0;
  for (const auto& argument : execute.arguments) {
    if (argument.out) continue;
    text += fmt::format("{} {} AS c{}", count == 0 ? "" : ",", inputs[count], count + 1);
    translation.procedureInputs.push_back(wantedType(argument.value));
    ++count;
  }
  return text;
}

const Engine& postgresqlEngine() {
  static const PostgresqlEngine engine;
  return engine;
}

}  // namespace tarlo::tsql::print
