#include "tsql/resolve/functions.h"

namespace tarlo::tsql {
namespace {

using enum ArgumentRule;
using R = ResultRule;

constexpr Function scalar(std::string_view name, std::size_t fewest, std::size_t most, R result,
                          ArgumentRule a = Any, ArgumentRule b = Any, ArgumentRule c = Any,
                          ArgumentRule d = Any) {
  return {name, fewest, most, result, {a, b, c, d}};
}

constexpr Function withDigits(Function function) {
  function.fixedFrom = 1;
  return function;
}

constexpr Function withPart(Function function) {
  function.takesPart = true;
  return function;
}

constexpr Function aggregate(std::string_view name, R result, ArgumentRule argument) {
  Function function = scalar(name, 1, 1, result, argument);
  function.isAggregate = true;
  return function;
}

constexpr Function kFunctions[] = {
    scalar("ABS", 1, 1, R::First, Number),
    scalar("SIGN", 1, 1, R::First, Number),
    scalar("CEILING", 1, 1, R::FirstWhole, Number),
    scalar("FLOOR", 1, 1, R::FirstWhole, Number),
    withDigits(scalar("ROUND", 2, 3, R::First, Number, Int, Int)),
    scalar("POWER", 2, 2, R::FirstWidest, Number, Number),
    scalar("SQRT", 1, 1, R::Float, Float),
    scalar("SQUARE", 1, 1, R::Float, Float),
    scalar("EXP", 1, 1, R::Float, Float),
    scalar("LOG", 1, 1, R::Float, Float),
    scalar("LOG10", 1, 1, R::Float, Float),

    scalar("GETDATE", 0, 0, R::Date),
    scalar("CURRENT_TIMESTAMP", 0, 0, R::Date),
    scalar("YEAR", 1, 1, R::Int, Date),
    scalar("MONTH", 1, 1, R::Int, Date),
    scalar("DAY", 1, 1, R::Int, Date),
    // The designer offers these three, though the server has DATEPART only.
    scalar("HOUR", 1, 1, R::Int, Date),
    scalar("MINUTE", 1, 1, R::Int, Date),
    scalar("SECOND", 1, 1, R::Int, Date),
    withPart(scalar("DATEPART", 1, 1, R::Int, Date)),
    withPart(scalar("DATENAME", 1, 1, R::Text, Date)),
    withPart(scalar("DATEDIFF", 2, 2, R::Int, Date, Date)),
    withPart(scalar("DATEADD", 2, 2, R::Date, Int, Date)),

    scalar("ISNULL", 2, 2, R::First, Any, First),
    scalar("COALESCE", 2, kManyArguments, R::Common, Common, Common, Common, Common),
    scalar("NULLIF", 2, 2, R::Common, Common, Common),

    scalar("LEN", 1, 1, R::Int, Text),
    scalar("DATALENGTH", 1, 1, R::Int, OnlyText),
    scalar("SUBSTRING", 3, 3, R::Text, Text, Int, Int),
    scalar("LEFT", 2, 2, R::Text, Text, Int),
    scalar("RIGHT", 2, 2, R::Text, Text, Int),
    scalar("REPLACE", 3, 3, R::Text, Text, Text, Text),
    scalar("LTRIM", 1, 1, R::Text, Text),
    scalar("RTRIM", 1, 1, R::Text, Text),
    scalar("TRIM", 1, 1, R::Text, Text),
    scalar("UPPER", 1, 1, R::Text, Text),
    scalar("LOWER", 1, 1, R::Text, Text),
    withDigits(scalar("STR", 1, 3, R::Text, Float, Int, Int)),
    scalar("CHARINDEX", 2, 3, R::Int, Text, Text, Int),
    scalar("REPLICATE", 2, 2, R::Text, Text, Int),
    scalar("SPACE", 1, 1, R::Text, Int),
    scalar("STUFF", 4, 4, R::Text, Text, Int, Int, Text),
    scalar("REVERSE", 1, 1, R::Text, Text),
    scalar("ASCII", 1, 1, R::Int, Text),
    scalar("CHAR", 1, 1, R::Text, Int),
    scalar("ISNUMERIC", 1, 1, R::Int, Any),
    scalar("CONCAT", 2, kManyArguments, R::Text, Text, Text, Text, Text),
    scalar("SCOPE_IDENTITY", 0, 0, R::Int),

    aggregate("COUNT", R::Int, Any),
    aggregate("SUM", R::Sum, Any),
    aggregate("AVG", R::Average, Any),
    aggregate("MIN", R::First, Any),
    aggregate("MAX", R::First, Any),
};

}  // namespace

const Function* findFunction(std::string_view name) {
  for (const Function& function : kFunctions) {
    if (function.name == name) return &function;
  }
  return nullptr;
}

}  // namespace tarlo::tsql
