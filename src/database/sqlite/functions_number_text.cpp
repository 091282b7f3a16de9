// Numbers as texts: the forms that CAST, STR and ISNUMERIC know.

#include <fmt/format.h>

#include <cmath>

#include "database/sqlite/function_call.h"
#include "database/sqlite/rounding.h"
#include "tsql/resolve/literal_value.h"

namespace tarlo::database {
namespace {

// tsql_decimal_text(x, scale): all digits of the scale.
void decimalText(FunctionCall& call) {
  call.give(std::string_view(roundedText(call.number(0), static_cast<int>(call.integer(1)))));
}

// Six digits; an exponent has three, as the server writes it.
void floatText(FunctionCall& call) {
  std::string text = fmt::format("{:.6g}", call.number(0));
  const auto exponent = text.find('e');
  if (exponent != std::string::npos) {
    const std::string digits = text.substr(exponent + 2);
    text.resize(exponent + 2);
    if (digits.size() < 3) text.append(3 - digits.size(), '0');
    text += digits;
  }
  call.give(std::string_view(text));
}

// tsql_str(x, length, places): right-aligned; asterisks when the whole part does not fit, fewer
// places when only they do not.
void strText(FunctionCall& call) {
  constexpr std::int64_t kMostLength = 8000;
  constexpr std::int64_t kMostPlaces = 16;
  const std::int64_t length = call.integer(1);
  const std::int64_t wanted = call.integer(2);
  if (length < 0 || length > kMostLength || wanted < 0) return call.giveNull();
  const double number = call.number(0);
  int places = static_cast<int>(std::min(wanted, kMostPlaces));
  const auto width = static_cast<std::size_t>(length);
  std::string text = roundedText(number, places);
  while (text.size() > width && places > 0) text = roundedText(number, --places);
  if (text.size() > width) {
    text.assign(width, '*');
  } else {
    text.insert(0, width - text.size(), ' ');
  }
  call.give(std::string_view(text));
}

// tsql_narrow(text, length, marks): a number's text that does not fit is "*" where `marks` is 1
// (integers in varchar), else an error; digits are never cut.
void narrow(FunctionCall& call) {
  if (call.text(0).size() <= static_cast<std::size_t>(call.integer(1))) return call.giveSame(0);
  if (call.integer(2) == 0) throw FunctionError("arithmetic overflow: the text is too short");
  call.give(std::string_view("*"));
}

void isNumeric(FunctionCall& call) {
  if (call.isNull(0)) return call.give(std::int64_t{0});
  const std::string_view text = call.text(0);
  const bool isBlank = text.find_first_not_of(' ') == std::string_view::npos;
  const bool numeric = !call.isText(0) || (!isBlank && tsql::parseNumber(text).has_value());
  call.give(static_cast<std::int64_t>(numeric));
}

constexpr FunctionRow kNumberTextFunctions[] = {
    {"tsql_decimal_text", 2, decimalText},
    {"tsql_float_text", 1, floatText},
    {"tsql_str", 3, strText},
    {"tsql_narrow", 3, narrow},
    {"tsql_isnumeric", 1, isNumeric, Nulls::Passed},
};

}  // namespace

std::span<const FunctionRow> numberTextFunctions() {
  return kNumberTextFunctions;
}

}  // namespace tarlo::database
