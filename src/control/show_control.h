#pragma once
// A stored control as it looks, for the manager page's preview. All are operations and never raise.

#include "frame/page.h"

namespace tarlo::control {

// The dialog around the control of the posted `id`; empty for a control of another kind.
void showSearchDlg_UsrField(Page& page);

// The body of that dialog. A control that is not there is drawn without rows.
Variant showSearchDlg_UsrField1(Page& page);  // drop-down
Variant showSearchDlg_UsrField2(Page& page);  // cascade
Variant showSearchDlg_UsrField3(Page& page);  // list

// The same for a template, which is no list.
void showSearchDlg_sysField(Page& page);
Variant showSearchDlg_sysField1(Page& page);  // drop-down
Variant showSearchDlg_sysField2(Page& page);  // cascade

}  // namespace tarlo::control
