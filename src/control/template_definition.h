#pragma once
// The statements of templates, from what the template wizard posts.

#include <optional>
#include <string>

#include "control/control_definition.h"
#include "frame/page.h"

namespace tarlo::control {

// realField and viewField without line ends and blanks at their ends; a comma in front of the
// second one, which the form's empty box of the same name leaves, is cut.
ControlColumns postedTemplateColumns(Page& page);

// The drop-down's statement: both columns from their tables, live rows that meet the compiled
// filter. The condition on live rows names no table, so two tables that both have the column refuse
// it: deliberate.
std::string templateDropDown(Page& page, const ControlColumns& columns, const std::string& filter);

// The dictionary's id of a table by its physical name. Error 13 when there is none; DatabaseError.
Variant tableIdOf(Page& page, const std::string& table);

// A cascade from posted `viewfields` and `rel`, joined by "|||".
struct TemplateCascade {
  std::string statement;  // of the first box, which is the field chosen last
  std::string levels;     // of the further boxes, the field chosen first at the end
};
// Nothing when only one field was chosen. What is not in the dictionary is left out; never raises.
std::optional<TemplateCascade> postedCascade(Page& page);

}  // namespace tarlo::control
