#pragma once
// Saving a scheme: the wizard's whole form into one row of Zembra_Query_Main.

#include "frame/page.h"

namespace tarlo::scheme {

// Writes only a short script, which tells the wizard how it went: a refusal leaves the wizard open
// with nothing lost, success closes it and refreshes the list behind it. Never raises.
void addSearch(Page& page);

}  // namespace tarlo::scheme
