#include "tsql/print/sqlite_engine.h"

#include <fmt/format.h>

#include "tsql/print/printing.h"
#include "tsql/print/sqlite_types.h"

namespace tarlo::tsql::print {
namespace {

// A real that SQLite reads back as the same double and never as an integer.
std::string realText(double number) {
  std::string text = fmt::format("{}", number);
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

std::string quotedText(std::string_view text) {
  // A zero byte would end the statement.
  if (text.find('\0') == std::string_view::npos) return quoted(text);
  std::string hex;
  for (const char c : text) hex += fmt::format("{:02X}", static_cast<unsigned char>(c));
  return "CAST(X'" + hex + "' AS TEXT)";
}

std::string collated(std::string text, Type type) {
  return type.kind == Kind::Text ? text + " COLLATE TSQL" : text;
}

// Sums and products of decimals carry the error of the doubles; a stored decimal and a literal do
// not. Rounded to their scale they compare as decimals do.
bool needsRounding(const ast::Expr& expr) {
  if (expr.type.kind != Kind::Decimal) return false;
  if (const auto* function = std::get_if<ast::FunctionCall>(&expr.node)) {
    return function->name == "SUM" || function->name == "AVG";
  }
  return std::holds_alternative<ast::Binary>(expr.node);
}

}  // namespace

std::string SqliteEngine::parameter(std::size_t number) const {
  return fmt::format("?{}", number);
}

std::string SqliteEngine::constant(const ast::Literal& literal, const Parameter& wanted,
                                   Position position) const {
  const BoundValue bound = convertLiteral(literal.literalClass, literal.text, wanted, position);
  switch (bound.storage) {
    case BoundValue::Storage::Integer:
      return fmt::format("{}", bound.integer);
    case BoundValue::Storage::Real:
      return realText(bound.real);
    default:
      return quotedText(bound.owned.empty() ? bound.text : std::string_view(bound.owned));
  }
}

std::string SqliteEngine::unary(ast::UnaryOp op, std::string operand, Type) const {
  return fmt::format("({} {})", op == ast::UnaryOp::Minus ? "-" : "~", operand);
}

// Whole numbers are 64 bits wide here, 32 on the other engines: a result between the two is given,
// not refused.
std::string_view SqliteEngine::infix(const ast::Expr& binary) const {
  return commonInfix(std::get<ast::Binary>(binary.node));
}

std::string SqliteEngine::operation(const ast::Expr& binary, const std::string& left,
                                    const std::string& right) const {
  const auto& node = std::get<ast::Binary>(binary.node);
  const bool isInt = binary.type.kind == Kind::Int;
  // A literal divisor has been tried: it is not zero. Inline integers divide as SQLite does.
  const bool isSafe = std::holds_alternative<ast::Literal>(node.right->node);
  if (node.meaning == ast::Meaning::DatePlusDays) {
    return print::call("tsql_date_plus", {left, right});
  }
  if (node.meaning == ast::Meaning::DateMinusDays) {
    return fmt::format("tsql_date_plus({}, (- {}))", left, right);
  }
  if (node.meaning == ast::Meaning::DaysBetween) {
    return print::call("tsql_days_between", {left, right});
  }
  switch (node.op) {
    case ast::BinaryOp::Divide:
      if (isSafe && isInt) return fmt::format("({} / {})", left, right);
      return print::call(isInt ? "tsql_idiv" : "tsql_div", {left, right});
    case ast::BinaryOp::Modulo:
      if (isSafe && isInt) return fmt::format("({} % {})", left, right);
      return print::call(isInt ? "tsql_imod" : "tsql_mod", {left, right});
    default:
      return print::call("tsql_xor", {left, right});
  }
}

std::string SqliteEngine::compared(Writer& writer, const ast::Expr& expr, Use use,
                                   Side side) const {
  std::string text = value(writer, expr);
  if (side == Side::Listed) return text;
  const Type type = wantedType(expr);
  if (use != Use::Equality && type.kind == Kind::Text) return sortKey(std::move(text), type);
  if (type.kind == Kind::Decimal && needsRounding(expr)) {
    text = fmt::format("tsql_round({}, {}, 0)", text, expr.type.scale);
  }
  return collated(std::move(text), type);
}

std::string SqliteEngine::like(Writer& writer, const ast::Like& node) const {
  const std::string operand = value(writer, *node.operand);
  return fmt::format("({}tsql_like({}, {}))", node.negated ? "NOT " : "",
                     value(writer, *node.pattern), operand);
}

std::string SqliteEngine::inList(Writer& writer, const ast::InList& node) const {
  const std::vector<std::string> items = values(writer, node.items);
  return fmt::format("({}{} IN ({}))", compared(writer, *node.operand, Use::Equality, Side::Left),
                     negation(node.negated), fmt::join(items, ", "));
}

std::string SqliteEngine::inQuery(Writer& writer, const ast::InQuery& node) const {
  const std::string query = printQuery(writer, *node.query, RowOrder::Any);
  return fmt::format("({}{} IN ({}))", compared(writer, *node.operand, Use::Equality, Side::Left),
                     negation(node.negated), query);
}

std::string SqliteEngine::selected(Writer& writer, const ast::Expr& expr, bool isCompared) const {
  return isCompared ? compared(writer, expr, Use::Equality, Side::Left) : value(writer, expr);
}

std::string SqliteEngine::comparedItem(const std::string& name, Type type) const {
  return collated(name, type);
}

std::string SqliteEngine::scalarSubquery(const ast::Query& query, std::string text) const {
  if (givesOneRow(query)) return "(" + text + ")";
  // Over a derived table, so that the aggregate never belongs to the query outside.
  return "(SELECT tsql_single(c1) FROM (" + text + "))";
}

std::string SqliteEngine::paging(const std::string& fetch, const std::string& offset) const {
  return fmt::format(" LIMIT {} OFFSET {}", fetch.empty() ? "-1" : fetch, offset);
}

std::string SqliteEngine::sortKey(std::string text, Type type) const {
  return type.kind == Kind::Text ? print::call("tsql_sortkey", {text}) : text;
}

std::string SqliteEngine::columnType(const ast::ColumnDefinition& definition, Type type,
                                     bool isKey) const {
  // Only an identity column may be declared INTEGER PRIMARY KEY: SQLite numbers such a column by
  // itself.
  if (isKey && type.kind == Kind::Int && !definition.computedAs) return "INT";
  // Files stay writable for every other SQLite program: the only collation is SQLite's NOCASE.
  return declaredType(type) + (type.kind == Kind::Text ? " COLLATE NOCASE" : "");
}

std::string SqliteEngine::indexPart(const Column& column, bool isDescending) const {
  return quotedName(column.name) + (isDescending ? " DESC" : "");
}

std::string SqliteEngine::execute(const ast::Execute& execute,
                                  const std::vector<std::string>& inputs, Translation&) const {
  std::vector<std::string> arguments{quotedText(execute.procedure)};
  arguments.insert(arguments.end(), inputs.begin(), inputs.end());
  return "SELECT " + print::call("tsql_exec", arguments) + " AS c1";
}

const Engine& sqliteEngine() {
  static const SqliteEngine engine;
  return engine;
}

}  // namespace tarlo::tsql::print
