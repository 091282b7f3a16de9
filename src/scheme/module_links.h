#pragma once
// Where the current module stands in the platform's menu: its neighbours, its workflow and what it
// is a child of. The current module is Session("usrICID"). All raise DatabaseError.

#include <optional>
#include <string>

#include "frame/page.h"

namespace tarlo::scheme {

// Whether the current module stands below the menu of the workflow modules. Error 13 or 6 when
// usrICID is no 16-bit number.
bool isWorkflowChild(Page& page);

// The id of the newest workflow of the current module's family, nothing when the module starts no
// workflow. Error 13 when the family has no workflow, the errors of a 16-bit conversion when the
// module's value is not a number.
std::optional<std::string> moduleWorkflow(Page& page);

// The pane of links to the modules beside the current one that the user may open, as page text:
// folders with their entries, the current module greyed. "" when usrICID is not an integer (no
// statement runs then) or nothing is to be shown. Names and descriptions are text.
std::string neighbourLinks(Page& page);

}  // namespace tarlo::scheme
