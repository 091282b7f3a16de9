#pragma once
// Where the current module stands in the platform's menu: its neighbours, its workflow and what it
// is a child of. The current module is Session("usrICID").

#include "frame/page.h"

namespace tarlo::scheme {

// Whether the current module stands elsewhere than below the menu of the workflow modules. Error 13
// or 6 when usrICID is no 16-bit number; DatabaseError.
Variant isNotWorkflowChild(Page& page);

// The id of the newest workflow of the current module's family, False when the module starts no
// workflow. Error 13 when the family has no workflow, the errors of a 16-bit conversion when the
// module's value is not a number; DatabaseError.
Variant getModuleWorkflow(Page& page);

// The pane of links to the modules beside the current one that the user may open, as page text:
// folders with their entries, the current module greyed. Empty when usrICID is not an integer (no
// statement runs then) or nothing is to be shown. Names and descriptions are text.
// Raises DatabaseError. The argument is not read.
Variant showLinksq(Page& page, const Variant& styleaa);

}  // namespace tarlo::scheme
