#pragma once
// The rows of a control's filter as the wizards draw them, and the functions behind: one row of
// column, operator, value and logic, further rows as the logic asks for them.

#include <string>
#include <string_view>

namespace tarlo::control {

// `fields` is a combo box's data, `width` that of its box in pixels.
std::string filterArea(std::string_view width, std::string_view fields);

// What a further row is copied from.
enum class FirstRow {
  AsDrawn,   // the row as it was when the script came
  AsStands,  // the row as it is now
};
std::string filterScript(FirstRow copy);

}  // namespace tarlo::control
