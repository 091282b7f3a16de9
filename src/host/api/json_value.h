#pragma once
// Values as JSON. The states that the pages' rules hang on - Empty, Null, "" - stay apart.

#include <nlohmann/json.hpp>
#include <string>

#include "variant/variant.h"

namespace tarlo::host {

using Json = nlohmann::ordered_json;

// Empty is {}, Null is null, dates are text, a decimal is a number where a double holds it exactly
// and text otherwise. An array is a list of its elements by the first index, so a rows table is a
// list of columns. An object is {"object": true}.
Json toJson(const Variant& value);

// One line; bytes that are not UTF-8 become U+FFFD.
std::string jsonText(const Json& json);

}  // namespace tarlo::host
