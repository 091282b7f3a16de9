// Function calls and aggregates. Arguments have been converted by the resolver's rules.

#include <fmt/format.h>

#include "tsql/error.h"
#include "tsql/print/printing.h"
#include "tsql/print/sqlite_engine.h"
#include "tsql/resolve/date_parts.h"

namespace tarlo::tsql::print {
namespace {

using ast::Expr;
using ast::FunctionCall;

constexpr std::string_view kNow = "strftime('%Y-%m-%d %H:%M:%f','now','localtime')";

// Functions that print as one call with their own arguments.
struct Plain {
  std::string_view name;
  std::string_view printed;
};
constexpr Plain kPlain[] = {
    {"ABS", "abs"},
    {"SIGN", "tsql_sign"},
    {"SQRT", "tsql_sqrt"},
    {"SQUARE", "tsql_square"},
    {"EXP", "tsql_exp"},
    {"LOG", "tsql_log"},
    {"LOG10", "tsql_log10"},
    {"LEN", "tsql_len"},
    {"DATALENGTH", "tsql_datalength"},
    {"SUBSTRING", "tsql_substring"},
    {"LEFT", "tsql_left"},
    {"RIGHT", "tsql_right"},
    {"REPLACE", "tsql_replace"},
    {"LTRIM", "ltrim"},
    {"RTRIM", "rtrim"},
    {"TRIM", "trim"},
    {"UPPER", "tsql_upper"},
    {"LOWER", "tsql_lower"},
    {"REPLICATE", "tsql_replicate"},
    {"SPACE", "tsql_space"},
    {"STUFF", "tsql_stuff"},
    {"REVERSE", "tsql_reverse"},
    {"ASCII", "tsql_ascii"},
    {"CHAR", "tsql_char"},
    {"ISNUMERIC", "tsql_isnumeric"},
    {"ISNULL", "coalesce"},
    {"COALESCE", "coalesce"},
};

// Functions whose trailing arguments may be left out: filled with what they then are.
struct Filled {
  std::string_view name;
  std::string_view printed;
  std::size_t count;
  std::string_view defaults[3];
};
constexpr Filled kFilled[] = {
    {"ROUND", "tsql_round", 3, {"", "", "0"}},
    {"STR", "tsql_str", 3, {"", "10", "0"}},
    {"CHARINDEX", "tsql_charindex", 3, {"", "", "1"}},
};

// A part under the one name that the functions show.
std::string partText(std::string_view typed) {
  const auto part = findDatePart(typed);
  for (const DatePartName& entry : kDatePartNames) {
    if (part && entry.part == *part) return quoted(entry.name);
  }
  return quoted(typed);
}

class CallPrinter {
 public:
  CallPrinter(const SqliteEngine& engine, Writer& writer, const Expr& expr)
      : engine_(engine), writer_(writer), node_(std::get<FunctionCall>(expr.node)), expr_(expr) {}

  std::string print() const {
    if (isAggregate(expr_)) return aggregate();
    if (node_.name == "GETDATE" || node_.name == "CURRENT_TIMESTAMP") return std::string(kNow);
    std::vector<std::string> arguments = values(writer_, node_.arguments);
    for (const Plain& plain : kPlain) {
      if (plain.name == node_.name) return call(plain.printed, arguments);
    }
    for (const Filled& filled : kFilled) {
      if (filled.name != node_.name) continue;
      while (arguments.size() < filled.count) {
        arguments.emplace_back(filled.defaults[arguments.size()]);
      }
      return call(filled.printed, arguments);
    }
    return special(std::move(arguments));
  }

 private:
  std::string special(std::vector<std::string> arguments) const {
    const std::string& name = node_.name;
    if (name == "CEILING" || name == "FLOOR") {
      if (expr_.type.kind == Kind::Int) return arguments[0];
      return call(name == "FLOOR" ? "tsql_floor" : "tsql_ceiling", arguments);
    }
    if (name == "POWER") {
      const std::string power = call("tsql_power", arguments);
      return expr_.type.kind == Kind::Int ? call("tsql_int", {power}) : power;
    }
    if (name == "CONCAT") return concatenation(arguments);
    if (name == "NULLIF") {
      return fmt::format("nullif({}, {})",
                         engine_.comparedItem(arguments[0], node_.arguments[0].wanted),
                         arguments[1]);
    }
    return date(std::move(arguments));
  }

  std::string date(std::vector<std::string> arguments) const {
    static constexpr std::string_view kPartFunctions[] = {"YEAR", "MONTH",  "DAY",
                                                          "HOUR", "MINUTE", "SECOND"};
    for (const std::string_view function : kPartFunctions) {
      if (function == node_.name) {
        return call("tsql_date_part", {partText(function), arguments[0]});
      }
    }
    arguments.insert(arguments.begin(), partText(node_.part));
    if (node_.name == "DATEPART") return call("tsql_date_part", arguments);
    if (node_.name == "DATENAME") return call("tsql_date_name", arguments);
    if (node_.name == "DATEADD") return call("tsql_date_add", arguments);
    if (node_.name == "DATEDIFF") return call("tsql_date_diff", arguments);
    throw StatementError(Refusal::Unsupported, expr_.position,
                         fmt::format("function {} on this engine", node_.name));
  }

  std::string aggregate() const {
    if (node_.star) return "COUNT(*)";
    const Expr& argument = node_.arguments[0];
    if (wantedType(argument).kind == Kind::Text && node_.name != "COUNT") {
      return call(node_.name == "MIN" ? "tsql_min_text" : "tsql_max_text",
                  {value(writer_, argument)});
    }
    const std::string text = engine_.compared(writer_, argument, Use::Equality, Side::Left);
    const std::string operand = (node_.distinct ? "DISTINCT " : "") + text;
    if (node_.name != "AVG") return fmt::format("{}({})", node_.name, operand);
    if (expr_.type.kind == Kind::Int) return fmt::format("(SUM({0}) / COUNT({0}))", operand);
    return fmt::format("(CAST(SUM({0}) AS REAL) / COUNT({0}))", operand);
  }

  const SqliteEngine& engine_;
  Writer& writer_;
  const FunctionCall& node_;
  const Expr& expr_;
};

}  // namespace

std::string SqliteEngine::call(Writer& writer, const Expr& expr) const {
  return CallPrinter(*this, writer, expr).print();
}

}  // namespace tarlo::tsql::print
