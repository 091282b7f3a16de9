#pragma once
// The saves of the user controls' wizard. The control's statement is run once before the row is
// written: one that the database refuses is not stored. The answers are scripts for the wizard's
// hidden frame, which either say what is wrong and leave the wizard where it is, or take it on.
// All are operations and never raise, but for the first.

#include "frame/page.h"

namespace tarlo::control {

void savesearch_UsrField(Page& page);   // by fieldtype: 1, 2 or 3; any other writes nothing
void savesearch_UsrField1(Page& page);  // drop-down
void savesearch_UsrField2(Page& page);  // cascade
void savesearch_UsrField3(Page& page);  // list

}  // namespace tarlo::control
