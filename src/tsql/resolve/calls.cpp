// Function calls, aggregates and casts.

#include <fmt/format.h>

#include "tsql/error.h"
#include "tsql/resolve/children.h"
#include "tsql/resolve/conversion.h"
#include "tsql/resolve/date_parts.h"
#include "tsql/resolve/functions.h"
#include "tsql/resolve/rules.h"
#include "tsql/resolve/type_names.h"

namespace tarlo::tsql {
namespace {

using ast::Expr;
using ast::FunctionCall;

constexpr std::uint8_t kAverageScale = 6;

[[noreturn]] void refuse(Refusal refusal, const Expr& expr, std::string_view message) {
  throw StatementError(refusal, expr.position, message);
}

void checkCount(const Expr& expr, const FunctionCall& call, const Function& function) {
  const std::size_t count = call.arguments.size();
  if (call.star && function.name == "COUNT") return;
  if (call.star || count < function.fewest || count > function.most) {
    const std::string expected =
        function.fewest == function.most  ? fmt::format("{}", function.fewest)
        : function.most == kManyArguments ? fmt::format("at least {}", function.fewest)
                                          : fmt::format("{} to {}", function.fewest, function.most);
    const std::string given = call.star ? "*" : fmt::format("{}", count);
    refuse(Refusal::Rule, expr,
           fmt::format("function {} takes {} argument(s){}, not {}", call.name, expected,
                       function.takesPart ? " behind the date part" : "", given));
  }
}

void checkPart(const Expr& expr, const FunctionCall& call, const Function& function) {
  if (!function.takesPart) return;
  if (findDatePart(call.part)) return;
  refuse(Refusal::Name, expr, fmt::format("unknown date part {}", call.part));
}

void checkAggregate(const Context& context, const Expr& expr, const FunctionCall& call) {
  if (!context.noAggregatesIn.empty()) {
    refuse(Refusal::Rule, expr,
           fmt::format("aggregate {} cannot stand in {}", call.name, context.noAggregatesIn));
  }
  if (context.sawAggregate) *context.sawAggregate = true;
}

// An aggregate over columns of the outer query only would belong to that query.
void checkAggregateColumns(const Expr& expr, const FunctionCall& call) {
  const auto check = [&](const Expr& part) {
    const auto* column = std::get_if<ast::ColumnRef>(&part.node);
    if (column && column->level > 0) {
      refuse(Refusal::Unsupported, expr,
             fmt::format("aggregate {} over column {} of an outer query", call.name, column->name));
    }
  };
  forEachExpr(expr, Subqueries::Skip, check);
  for (const Expr& argument : call.arguments) {
    if (holdsSubquery(argument)) {
      refuse(Refusal::Rule, expr, fmt::format("aggregate {} cannot hold a sub-query", call.name));
    }
  }
}

void checkAddable(const Expr& expr, const FunctionCall& call, const Function& function) {
  if (function.result != ResultRule::Sum && function.result != ResultRule::Average) return;
  const Kind kind = call.arguments[0].type.kind;
  if (isNumeric(kind)) return;
  refuse(Refusal::Kind, expr, fmt::format("{} does not take {}", call.name, describe(kind)));
}

Type commonOf(const FunctionCall& call) {
  Type common;
  for (const Expr& argument : call.arguments) common = commonType(common, argument.type);
  return common;
}

// The type without the length of the column that it comes from.
Type unbounded(Type type) {
  type.length = 0;
  return type;
}

Type wantedBy(ArgumentRule rule, const FunctionCall& call, const Expr& argument) {
  switch (rule) {
    case ArgumentRule::Text:
    case ArgumentRule::OnlyText:
      return kTextType;
    case ArgumentRule::Int:
      return kIntType;
    case ArgumentRule::Number:
      return isNumeric(argument.type) ? argument.type : kFloatType;
    case ArgumentRule::Float:
      return kFloatType;
    case ArgumentRule::Date:
      return kDateType;
    case ArgumentRule::Common:
      return commonOf(call);
    case ArgumentRule::First: {
      const Type first = call.arguments[0].type;
      return first.kind == Kind::Null ? argument.type : unbounded(first);
    }
    case ArgumentRule::Any:
      break;
  }
  return argument.type;
}

void convertArguments(FunctionCall& call, const Function& function) {
  for (std::size_t i = 0; i < call.arguments.size(); ++i) {
    Expr& argument = call.arguments[i];
    const ArgumentRule rule = function.arguments[std::min<std::size_t>(i, 3)];
    const Kind kind = argument.type.kind;
    if (rule == ArgumentRule::OnlyText && kind != Kind::Text && kind != Kind::Null) {
      refuse(Refusal::Unsupported, argument,
             fmt::format("{} of {}: it is taken of texts only", call.name, describe(kind)));
    }
    want(argument, wantedBy(rule, call, argument));
    if (i >= function.fixedFrom) fixLiterals(argument);
  }
}

Type resultOf(const FunctionCall& call, const Function& function) {
  const Type first = call.arguments.empty() ? Type{} : unbounded(call.arguments[0].wanted);
  const bool decimal = first.kind == Kind::Decimal;
  switch (function.result) {
    case ResultRule::Int:
      return kIntType;
    case ResultRule::Float:
      return kFloatType;
    case ResultRule::Text:
      return kTextType;
    case ResultRule::Date:
      return kDateType;
    case ResultRule::FirstWhole:
      return decimal ? decimalType(kMaxPrecision, 0) : first;
    case ResultRule::FirstWidest:
    case ResultRule::Sum:
      return decimal ? decimalType(kMaxPrecision, first.scale) : first;
    case ResultRule::Average:
      return decimal ? decimalType(kMaxPrecision, std::max(kAverageScale, first.scale)) : first;
    case ResultRule::Common:
      return commonOf(call);
    case ResultRule::First:
      break;
  }
  // ISNULL(NULL, x) is of the kind of x.
  return first.kind == Kind::Null && call.arguments.size() > 1 ? unbounded(call.arguments[1].wanted)
                                                               : first;
}

bool betweenDateAndText(Kind from, Kind to) {
  return (from == Kind::Date && to == Kind::Text) || (from == Kind::Text && to == Kind::Date);
}

// Texts are read as dates with the year first; a style that says otherwise cannot be followed.
bool isYearFirst(int style) {
  return style == 0 || (style >= 20 && style <= 23) || style == 102 || style == 111 ||
         style == 112 || style == 120 || style == 121 || style == 126;
}

void checkStyle(const Expr& expr, const ast::Cast& cast) {
  if (cast.style < 0) return;
  const Kind from = cast.operand->type.kind;
  const Kind to = expr.type.kind;
  constexpr int kMostIgnored = 2;
  const bool taken = betweenDateAndText(from, to)
                         ? isDateStyle(cast.style) && (to == Kind::Text || isYearFirst(cast.style))
                         : cast.style <= kMostIgnored;
  if (taken) return;
  refuse(Refusal::Unsupported, expr,
         fmt::format("CONVERT style {} from {} to {}", cast.style, describe(from), describe(to)));
}

}  // namespace

void resolveCall(const Context& context, ast::Expr& expr) {
  auto& call = std::get<FunctionCall>(expr.node);
  const Function* function = findFunction(call.name);
  if (!function) refuse(Refusal::Name, expr, fmt::format("unknown function {}", call.name));
  checkCount(expr, call, *function);
  checkPart(expr, call, *function);
  if (call.distinct && !function->isAggregate) {
    refuse(Refusal::Rule, expr, fmt::format("function {} does not take DISTINCT", call.name));
  }
  Context inner = context;
  if (function->isAggregate) {
    checkAggregate(context, expr, call);
    inner.noAggregatesIn = "another aggregate";
  }
  for (Expr& argument : call.arguments) resolveExpr(inner, argument);
  if (function->isAggregate) {
    checkAggregateColumns(expr, call);
    checkAddable(expr, call, *function);
  }
  convertArguments(call, *function);
  expr.type = resultOf(call, *function);
}

void resolveCast(const Context& context, ast::Expr& expr) {
  auto& cast = std::get<ast::Cast>(expr.node);
  resolveExpr(context, *cast.operand);
  expr.type = typeOf(cast.typeName, cast.typeSizes, TypeUse::Cast, expr.position);
  checkStyle(expr, cast);
  // The cast itself converts, so the operand stays as it is.
  tryLiteral(*cast.operand, expr.type);
}

}  // namespace tarlo::tsql
