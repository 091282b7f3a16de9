#pragma once
// Comma-separated values as RFC 4180 has them: CR LF behind every record, fields quoted where they
// must be. What stands in the database goes out as it is, for programs that read it back: nothing
// is put in front of what a spreadsheet would run, as the lists' download does.

#include <string>
#include <string_view>

#include "variant/variant.h"

namespace tarlo::app {

// Quoted when it holds a comma, a quote or a line end, or is "", which sets it apart from Null.
std::string csvField(std::string_view text);
// Null is a field with nothing in it.
std::string csvField(const Variant& value);

}  // namespace tarlo::app
