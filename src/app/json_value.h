#pragma once
// Values between the command line and JSON. The states that the pages' rules hang on - Empty, Null,
// "" - stay apart in both directions.

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

#include "variant/variant.h"

namespace tarlo::app {

using Json = nlohmann::ordered_json;

// An argument that begins with "json:" and does not hold what may follow it.
class ArgumentError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Empty is {}, Null is null, dates are text, a decimal is a number where a double holds it exactly
// and text otherwise. An array is a list of its elements by the first index, so a rows table is a
// list of columns. An object is {"object": true}.
Json toJson(const Variant& value);

// The text as it stands, or behind "json:" any of: nothing or {} (Empty), null, true, false, a
// number, a quoted text, a list (an array; a list of lists of one length is an array of two
// dimensions). Throws ArgumentError.
Variant parseArgument(std::string_view argument);

// One line; bytes that are not UTF-8 become U+FFFD.
std::string jsonText(const Json& json);

}  // namespace tarlo::app
