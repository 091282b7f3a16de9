#pragma once
// The saves of the template wizard. As in save_control.h, but for two rules that templates have
// always lived by: a drop-down's name is not asked for, and a cascade's statement is not run before
// it is stored. All are operations and never raise, but for the first.

#include "frame/page.h"

namespace tarlo::control {

void savesearch_sysField(Page& page);   // by fieldtype: 1 or 2; any other writes nothing
void savesearch_sysField1(Page& page);  // drop-down
void savesearch_sysField2(Page& page);  // cascade

}  // namespace tarlo::control
