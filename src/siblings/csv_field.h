#pragma once
// CSV as spreadsheets read it.

#include <string>
#include <vector>

#include "variant/variant.h"

namespace tarlo::siblings {

// A value as a field. A text that a spreadsheet might run as a formula gets an apostrophe in front;
// numbers stay. Captions are texts of designers, and go through it too.
std::string csvText(const Variant& value);

// One record with its line end; fields are quoted where they need it.
std::string csvRecord(const std::vector<std::string>& fields);

}  // namespace tarlo::siblings
