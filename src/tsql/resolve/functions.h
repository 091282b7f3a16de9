#pragma once
// The scalar functions and aggregates that statements may call. A name that is not here is refused,
// whatever the engine would make of it.

#include <cstddef>
#include <string_view>

namespace tarlo::tsql {

// What a function makes of an argument.
enum class ArgumentRule {
  Any,       // taken as it is
  Text,      // converted to text
  OnlyText,  // text already, else refused
  Int,       // converted to an integer
  Number,    // a number as it is; text as a float
  Float,     // converted to a float
  Date,      // converted to a date
  Common,    // all arguments converted to their common type
  First      // converted to the type of the first argument
};

enum class ResultRule {
  Int,
  Float,
  Text,
  Date,
  First,        // the type of the first argument
  FirstWhole,   // the same without digits behind the point
  FirstWidest,  // the same with the most digits
  Common,       // the common type of the arguments
  Sum,          // Int, Decimal(38, s) or Float
  Average       // Int, Decimal(38, at least 6) or Float
};

struct Function {
  std::string_view name;  // upper case
  std::size_t fewest;     // arguments, without the date part
  std::size_t most;
  ResultRule result;
  ArgumentRule arguments[4];  // by position; the last one holds for all that follow
  bool takesPart = false;     // a date part comes first
  bool isAggregate = false;
  // The first argument, counted from 0, from which on values decide what is printed.
  std::size_t fixedFrom = kNone;
  static constexpr std::size_t kNone = 99;
};

inline constexpr std::size_t kManyArguments = 254;

// The function of an upper-case name, or nullptr.
const Function* findFunction(std::string_view name);

}  // namespace tarlo::tsql
