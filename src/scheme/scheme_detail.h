#pragma once
// What the manager's buttons ask for besides the wizard: a scheme's fields, deletion, and which
// tables some fields belong to. None of these raises for a failed statement.

#include "frame/page.h"

namespace tarlo::scheme {

// Writes the dialog with the titles of the scheme `id` of the request.
void showSearchDlg(Page& page);

// Flags the schemes `ID` of the request (a list, spliced as it came) and their control schemes as
// deleted, and says so whether or not it worked.
void delSearch(Page& page);

// Answers with the ids of the tables that the fields `field` of the request (a list) belong to,
// joined by ",", and with nothing around it; nothing at all when there are none.
void querycheckselect(Page& page);

}  // namespace tarlo::scheme
