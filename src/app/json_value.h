#pragma once
// Values given on the command line: as text, or as JSON in the form in which they are printed.

#include <stdexcept>
#include <string>
#include <string_view>

#include "host/api/json_value.h"
#include "variant/variant.h"

namespace tarlo::app {

using host::Json;
using host::jsonText;
using host::toJson;

// An argument that begins with "json:" and does not hold what may follow it.
class ArgumentError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The text as it stands, or behind "json:" any of: nothing or {} (Empty), null, true, false, a
// number, a quoted text, a list (an array; a list of lists of one length is an array of two
// dimensions). Throws ArgumentError.
Variant parseArgument(std::string_view argument);

}  // namespace tarlo::app
