#include "control/filter_area.h"

#include "embedded_control_pages.h"
#include "frame/template.h"

namespace tarlo::control {

using frame::Template;

std::string filterArea(std::string_view width, std::string_view fields) {
  static const Template area(embedded::control_pages::find("filter_area.html"));
  return area.fill({{"width", width}, {"fields", fields}});
}

std::string filterScript(FirstRow copy) {
  static const Template script(embedded::control_pages::find("filter_area.js"));
  const bool isFresh = copy == FirstRow::AsStands;
  return script.fill(
      {{"first", isFresh ? "var divHTML;" : "var divHTML=relation2.innerHTML;"},
       {"fresh", isFresh ? "divHTML=relation2.children(0).innerHTML;\r\n\t\t" : ""}});
}

}  // namespace tarlo::control
