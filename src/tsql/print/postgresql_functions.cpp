// Function calls and aggregates on PostgreSQL. Arguments have been converted by the resolver's
// rules.

#include <fmt/format.h>

#include "tsql/error.h"
#include "tsql/print/postgresql_engine.h"
#include "tsql/print/printing.h"
#include "tsql/resolve/functions.h"

namespace tarlo::tsql::print {
namespace {

using ast::Expr;
using ast::FunctionCall;

// Functions that print as one form, with {0}, {1}, ... for their arguments.
struct Form {
  std::string_view name;
  std::string_view text;
};
constexpr Form kForms[] = {
    {"ABS", "abs({0})"},
    {"SQRT", "sqrt({0})"},
    {"SQUARE", "power({0}, 2)"},
    {"EXP", "exp({0})"},
    {"LOG", "ln({0})"},
    {"LOG10", "log({0})"},
    {"LEN", "tarlo.len({0})"},
    {"DATALENGTH", "(2 * tarlo.units({0}))"},
    {"SUBSTRING", "tarlo.substring({0}, {1}, {2})"},
    {"LEFT", "tarlo.left({0}, {1})"},
    {"RIGHT", "tarlo.right({0}, {1})"},
    {"REPLACE", "tarlo.replace({0}, {1}, {2})"},
    {"LTRIM", "ltrim({0})"},
    {"RTRIM", "rtrim({0})"},
    {"TRIM", "btrim({0})"},
    {"UPPER", "tarlo.upper({0})"},
    {"LOWER", "tarlo.lower({0})"},
    {"REPLICATE", "tarlo.replicate({0}, {1})"},
    {"SPACE", "tarlo.replicate(' '::text, {0})"},
    {"STUFF", "tarlo.stuff({0}, {1}, {2}, {3})"},
    {"REVERSE", "reverse({0})"},
    {"ASCII", "nullif(ascii({0}), 0)"},
    {"CHAR", "CASE WHEN {0} BETWEEN 0 AND 255 THEN chr({0}) END"},
};

class CallPrinter {
 public:
  CallPrinter(const PostgresqlEngine& engine, Writer& writer, const Expr& expr)
      : engine_(engine), writer_(writer), node_(std::get<FunctionCall>(expr.node)), expr_(expr) {}

  std::string print() const {
    if (isAggregate(expr_)) return aggregate();
    const std::vector<std::string> arguments = printedArguments();
    std::string date = postgresqlDateCall(node_, arguments);
    if (!date.empty()) return date;
    for (const Form& form : kForms) {
      if (form.name == node_.name) return filled(form.text, arguments);
    }
    return special(arguments);
  }

 private:
  // PostgreSQL finds a function by the widths of its integers.
  std::vector<std::string> printedArguments() const {
    std::vector<std::string> arguments = values(writer_, node_.arguments);
    const Function* function = findFunction(node_.name);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      const bool isInt = function->arguments[std::min<std::size_t>(i, 3)] == ArgumentRule::Int;
      const bool isLiteral = std::holds_alternative<ast::Literal>(node_.arguments[i].node);
      if (isInt && !isLiteral && !arguments[i].ends_with("::int4")) arguments[i] += "::int4";
    }
    return arguments;
  }

  static std::string filled(std::string_view form, const std::vector<std::string>& arguments) {
    std::string text;
    for (std::size_t at = 0; at < form.size(); ++at) {
      if (form[at] != '{') {
        text += form[at];
        continue;
      }
      text += arguments[static_cast<std::size_t>(form[at + 1] - '0')];
      at += 2;
    }
    return text;
  }

  std::string special(const std::vector<std::string>& arguments) const {
    const std::string& name = node_.name;
    const std::string& first = arguments[0];
    if (name == "CEILING" || name == "FLOOR") {
      if (expr_.type.kind == Kind::Int) return first;
      return print::call(name == "FLOOR" ? "floor" : "ceil", {first});
    }
    if (name == "SIGN") return asInt(fmt::format("sign({})", first));
    if (name == "ROUND") return rounded(arguments);
    if (name == "POWER") return power(arguments);
    if (name == "ISNULL" || name == "COALESCE") return print::call("coalesce", arguments);
    if (name == "NULLIF") return nullIf(arguments);
    if (name == "CONCAT") return concatenation(arguments);
    if (name == "STR") return print::call("tarlo.str", completed(arguments, {"", "10", "0"}));
    if (name == "CHARINDEX")
      return print::call("tarlo.char_index", completed(arguments, {"", "", "1"}));
    if (name == "ISNUMERIC") {
      return node_.arguments[0].type.kind == Kind::Text
                 ? print::call("tarlo.is_numeric", arguments)
                 : fmt::format("({} IS NOT NULL)::int4", first);
    }
    throw StatementError(Refusal::Unsupported, expr_.position,
                         fmt::format("function {} on this engine", name));
  }

  // With the last of `all` for arguments that are left out.
  static std::vector<std::string> completed(std::vector<std::string> arguments,
                                            const std::vector<std::string>& all) {
    for (std::size_t i = arguments.size(); i < all.size(); ++i) arguments.push_back(all[i]);
    return arguments;
  }

  std::string asInt(std::string text) const {
    return expr_.type.kind == Kind::Int ? text + "::int4" : text;
  }

  std::string rounded(const std::vector<std::string>& arguments) const {
    const bool isDecimal = expr_.type.kind == Kind::Decimal;
    const std::string number = isDecimal ? arguments[0] : arguments[0] + "::numeric";
    const auto by = [&](std::string_view function) {
      std::string text = fmt::format("{}({}, {})", function, number, arguments[1]);
      return expr_.type.kind == Kind::Float ? text + "::float8" : asInt(std::move(text));
    };
    if (arguments.size() < 3) return by("round");
    return fmt::format("CASE WHEN {} = 0 THEN {} ELSE {} END", arguments[2], by("round"),
                       by("trunc"));
  }

  std::string power(const std::vector<std::string>& arguments) const {
    const std::string text =
        fmt::format("power({}::float8, {}::float8)", arguments[0], arguments[1]);
    if (expr_.type.kind == Kind::Int) return fmt::format("trunc({})::int4", text);
    if (expr_.type.kind != Kind::Decimal) return text;
    return fmt::format("round({}::numeric, {})", text, expr_.type.scale);
  }

  std::string nullIf(const std::vector<std::string>& arguments) const {
    if (node_.arguments[0].wanted.kind != Kind::Text) return print::call("nullif", arguments);
    const auto folded = [&](std::size_t i) {
      return engine_.compared(writer_, node_.arguments[i], Use::Equality, Side::Left);
    };
    return fmt::format("CASE WHEN {} = {} THEN NULL ELSE {} END", folded(0), folded(1),
                       arguments[0]);
  }

  std::string aggregate() const {
    if (node_.star) return "count(*)::int4";
    const Kind kind = node_.arguments[0].type.kind;
    // What an aggregate sums up are the rows, not the groups.
    const ast::QuerySpec* grouped = std::exchange(writer_.scopes().back().grouped, nullptr);
    std::string text =
        kind == Kind::Text && node_.name == "COUNT" && node_.distinct
            ? engine_.compared(writer_, node_.arguments[0], Use::Equality, Side::Left)
            : value(writer_, node_.arguments[0]);
    writer_.scopes().back().grouped = grouped;
    if (kind == Kind::Null) text += "::text";
    return aggregateOf(text, kind);
  }

  std::string aggregateOf(const std::string& text, Kind kind) const {
    const std::string operand = (node_.distinct ? "DISTINCT " : "") + text;
    if (node_.name == "COUNT") return fmt::format("count({})::int4", operand);
    if (node_.name == "SUM") return asInt(fmt::format("sum({})", operand));
    if (node_.name == "AVG") {
      if (kind == Kind::Int) return fmt::format("(sum({0}) / count({0}))::int4", operand);
      const std::string average = fmt::format("avg({})", operand);
      return kind == Kind::Float ? average
                                 : fmt::format("round({}, {})", average, expr_.type.scale);
    }
    const std::string_view function = node_.name == "MIN" ? "min" : "max";
    if (kind != Kind::Text) return fmt::format("{}({})", function, text);
    // The order is that of texts; the value goes on without it.
    return fmt::format("({}({} COLLATE tarlo.chinese) COLLATE \"C\")", function, text);
  }

  const PostgresqlEngine& engine_;
  Writer& writer_;
  const FunctionCall& node_;
  const Expr& expr_;
};

}  // namespace

std::string PostgresqlEngine::call(Writer& writer, const Expr& expr) const {
  return CallPrinter(*this, writer, expr).print();
}

}  // namespace tarlo::tsql::print
