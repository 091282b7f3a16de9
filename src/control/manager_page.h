#pragma once
// The pages on which designers see all control schemes: one for users' controls, one for the
// templates that users' controls are bound from. Grid, views by kind, buttons, and the script
// behind them; and the deletes that run in the pages' hidden frame. All are operations.

#include "frame/page.h"

namespace tarlo::control {

// Raise what the page frame and the grid raise.
void ctrlSearch_Usrfield(Page& page);
void ctrlSearch_Sysfield(Page& page);

// Flag the control schemes `ID` of the request (a list, spliced as it came) as deleted. Never
// raise. The first says that it worked whether or not it did: deliberate, only the second looks at
// the error.
void delSearch_UsrField(Page& page);
void delSearch_sysField(Page& page);

}  // namespace tarlo::control
