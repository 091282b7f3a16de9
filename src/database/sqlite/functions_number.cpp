// Conversions to numbers, and arithmetic where SQLite's own differs: division by zero is an error,
// and rounding is decimal.

#include <algorithm>
#include <cmath>
#include <limits>

#include "database/sqlite/function_call.h"
#include "database/sqlite/rounding.h"
#include "tsql/resolve/literal_value.h"

namespace tarlo::database {
namespace {

constexpr double kIntLimit = 9.2e18;

void toInt(FunctionCall& call) {
  call.give(call.integer(0));
}

// tsql_int(x, bits): 8 is unsigned, as the server's smallest integer is.
void toSizedInt(FunctionCall& call) {
  const std::int64_t value = call.integer(0);
  const std::int64_t bits = call.integer(1);
  const bool isByte = bits == 8;
  const std::int64_t most = isByte ? 255 : std::numeric_limits<std::int64_t>::max() >> (64 - bits);
  const std::int64_t least = isByte ? 0 : -most - 1;
  if (value < least || value > most) {
    throw FunctionError("arithmetic overflow: the value is too large for the integer type");
  }
  call.give(value);
}

void toReal(FunctionCall& call) {
  call.give(call.number(0));
}

// tsql_decimal(x, scale, precision). Texts take no exponent.
void toDecimal(FunctionCall& call) {
  if (call.isText(0) && !tsql::parseNumber(call.text(0), tsql::Exponent::Refused)) {
    throw FunctionError("conversion failed: '" + std::string(call.text(0).substr(0, 60)) +
                        "' is not a decimal");
  }
  const int scale = static_cast<int>(call.integer(1));
  const double value = rounded(call.number(0), scale);
  if (std::fabs(value) >= std::pow(10.0, static_cast<double>(call.integer(2)) - scale)) {
    throw FunctionError("arithmetic overflow: the value is too large for the decimal type");
  }
  call.give(value);
}

void divideIntegers(FunctionCall& call) {
  const std::int64_t divisor = call.integer(1);
  if (divisor == 0) throw FunctionError("divide by zero");
  const std::int64_t value = call.integer(0);
  if (divisor == -1 && value == std::numeric_limits<std::int64_t>::min()) {
    throw FunctionError("arithmetic overflow");
  }
  call.give(value / divisor);
}

void integerRemainder(FunctionCall& call) {
  const std::int64_t divisor = call.integer(1);
  if (divisor == 0) throw FunctionError("divide by zero");
  call.give(divisor == -1 ? 0 : call.integer(0) % divisor);
}

void divide(FunctionCall& call) {
  const double divisor = call.number(1);
  if (divisor == 0) throw FunctionError("divide by zero");
  call.give(call.number(0) / divisor);
}

// On the digits that people see: 0.3 % 0.1 is 0, though the doubles leave nearly 0.1.
void remainder(FunctionCall& call) {
  const double divisor = call.number(1);
  if (divisor == 0) throw FunctionError("divide by zero");
  const double value = call.number(0);
  const double scaled = std::fmod(value * 1e6, divisor * 1e6);
  const bool isExact = std::fabs(value) < 1e9 && rounded(value, 6) == value &&
                       rounded(divisor, 6) == divisor && std::fabs(divisor) < 1e9;
  call.give(isExact
                ? static_cast<double>(std::llround(value * 1e6) % std::llround(divisor * 1e6)) / 1e6
                : scaled / 1e6);
}

void exclusiveOr(FunctionCall& call) {
  call.give(call.integer(0) ^ call.integer(1));
}

void sign(FunctionCall& call) {
  const double value = call.number(0);
  call.give(static_cast<std::int64_t>(value > 0) - static_cast<std::int64_t>(value < 0));
}

void ceiling(FunctionCall& call) {
  call.give(std::ceil(call.number(0)));
}
void floorOf(FunctionCall& call) {
  call.give(std::floor(call.number(0)));
}

// tsql_round(x, places, truncate): an integer stays one.
void roundNumber(FunctionCall& call) {
  const bool cut = call.integer(2) != 0;
  const int places = static_cast<int>(std::clamp<std::int64_t>(call.integer(1), -400, 400));
  if (call.isInteger(0) && places >= 0) return call.giveSame(0);
  const double value =
      rounded(call.number(0), places, cut ? Rounding::Truncate : Rounding::HalfAway);
  if (!call.isInteger(0)) return call.give(value);
  if (std::fabs(value) > kIntLimit) throw FunctionError("arithmetic overflow");
  call.give(static_cast<std::int64_t>(value));
}

void power(FunctionCall& call) {
  const double base = call.number(0);
  const double exponent = call.number(1);
  if (base == 0 && exponent < 0) throw FunctionError("divide by zero");
  call.give(std::pow(base, exponent));
}

void squareRoot(FunctionCall& call) {
  if (call.number(0) < 0) throw FunctionError("SQRT of a negative number");
  call.give(std::sqrt(call.number(0)));
}

void square(FunctionCall& call) {
  call.give(call.number(0) * call.number(0));
}
void exponential(FunctionCall& call) {
  call.give(std::exp(call.number(0)));
}

double positive(const FunctionCall& call) {
  if (call.number(0) <= 0) throw FunctionError("logarithm of a number that is not positive");
  return call.number(0);
}

void naturalLogarithm(FunctionCall& call) {
  call.give(std::log(positive(call)));
}
void decimalLogarithm(FunctionCall& call) {
  call.give(std::log10(positive(call)));
}

constexpr FunctionRow kNumberFunctions[] = {
    {"tsql_int", 1, toInt},
    {"tsql_int", 2, toSizedInt},
    {"tsql_real", 1, toReal},
    {"tsql_decimal", 3, toDecimal},
    {"tsql_idiv", 2, divideIntegers},
    {"tsql_imod", 2, integerRemainder},
    {"tsql_div", 2, divide},
    {"tsql_mod", 2, remainder},
    {"tsql_xor", 2, exclusiveOr},
    {"tsql_sign", 1, sign},
    {"tsql_ceiling", 1, ceiling},
    {"tsql_floor", 1, floorOf},
    {"tsql_round", 3, roundNumber},
    {"tsql_power", 2, power},
    {"tsql_sqrt", 1, squareRoot},
    {"tsql_square", 1, square},
    {"tsql_exp", 1, exponential},
    {"tsql_log", 1, naturalLogarithm},
    {"tsql_log10", 1, decimalLogarithm},
};

}  // namespace

std::span<const FunctionRow> numberFunctions() {
  return kNumberFunctions;
}

}  // namespace tarlo::database
