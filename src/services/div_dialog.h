#pragma once
// The floating dialog of a page: a hidden box with a title, a body and buttons, and the script that
// shows it.

#include "frame/page.h"

namespace tarlo::services {

// Writes the dialog; gives Empty. `id` names the box and goes into script unescaped; every text is
// markup. `WinButon` that is Empty, Null or "" gives three standard buttons, which call the page's
// DlgAddNew, DlgModify and DlgDelete. A width or height that is no number raises error 13, one
// beyond 16 bits error 6, with the start of the box already written. A page can hold one dialog
// only that openDivDlg() opens.
Variant TarloDivDialog(Page& page, const Variant& id, const Variant& WinTitle,
                       const Variant& TopicTitle, const Variant& WinWidth, const Variant& WinHeight,
                       const Variant& WinBody, const Variant& WinButon);

}  // namespace tarlo::services
