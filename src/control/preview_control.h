#pragma once
// Previews of the user controls' wizard: the control as it will look, drawn from what the wizard
// has posted before anything is stored. The statement is run through the operation log first; one
// that the database refuses gives an alert, and the wizard stays where it is. All are operations.

#include "frame/page.h"

namespace tarlo::control {

void previewSearchdlg_UsrField(Page& page);   // by fieldtype: 1, 2 or 3; any other writes nothing
void previewSearchdlg_UsrField1(Page& page);  // drop-down: never raises
// Cascade, in a dialog of its own; never raises. Its condition names no table, so the database
// always refuses the statement: kept as it is.
void previewSearchdlg_UsrField2(Page& page);
// List: keeps statement and titles in the session, for the page of the preview's frame. Raises what
// the scheme's columns raise.
void previewSearchdlg_UsrField3(Page& page);
// That page: the list's columns and no row. It takes the session's values away, so it shows the
// list once. Never raises.
void showSearchpreview_UsrField(Page& page);

}  // namespace tarlo::control
