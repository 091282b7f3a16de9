#pragma once
// The statements behind the desktop's panels. They form the panels' markup themselves: a title
// that is cut, a link that opens the task, red for what is late.

#include <string>

#include "variant/variant.h"

namespace tarlo::workflow {

// The five newest open tasks of the user that have started: markup and period.
std::string openTasksStatement(const Variant& user);
// The five newest steps that wait for the user, directly or through a delegation valid today:
// markup, state, Menu_ID. For an Empty user the text is one that the database refuses.
std::string waitingStepsStatement(const Variant& user);

}  // namespace tarlo::workflow
