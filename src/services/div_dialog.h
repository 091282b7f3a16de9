#pragma once
// The floating dialog of a page: a hidden box with a title, a body and buttons, and the script that
// shows it.

#include "frame/page.h"

namespace tarlo::services {

// Writes the dialog; gives Empty. `id` names the box, in its element and in script: what is no name
// becomes _. Every text is markup, which the calling page has made: values of a request or of rows
// are encoded by it. `WinButon` that is Empty, Null or "" gives three standard buttons, which call
// the page's DlgAddNew, DlgModify and DlgDelete. A width or height that is no number raises error
// 13, one beyond 16 bits error 6, with the start of the box already written. A page can hold one
// dialog only that openDivDlg() opens.
Variant TarloDivDialog(Page& page, const Variant& id, const Variant& WinTitle,
                       const Variant& TopicTitle, const Variant& WinWidth, const Variant& WinHeight,
                       const Variant& WinBody, const Variant& WinButon);

}  // namespace tarlo::services
