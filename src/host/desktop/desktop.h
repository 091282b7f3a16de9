#pragma once
// The desktop around the pages: header, menu, side pane and main frame, the start page and the
// sign-in form. The host writes them for addresses of its own; no other page of the system needs
// to know how they look.

#include <string_view>

#include "frame/page.h"

namespace tarlo::host {

// The outer page: header, the user's menu, frames TarloY and Zembra. Expects Session("usrID").
void writeShell(Page& page);
// The page of frame TarloY, in which pages put their texts and links. Loads the script library.
void writePane(Page& page);
// Opens a menu entry in the frame: notes its number as Session("usrICID"), as text, and sends the
// frame on to the entry's address, or writes the start page for "" and "0". An entry that does not
// exist, or that no role of the user may open, is refused with a page; the session stays as it is.
void openMenu(Page& page, std::string_view menuId);
// Greeting, the user's open tasks, schemes changed lately, shortcuts.
void writeStart(Page& page);
// The sign-in form: posts user, password and next to /sign-in. A `message` that is not empty is
// shown above the fields. Needs no session.
void writeSignInPage(Page& page, std::string_view message, std::string_view next);

// A form that asks for its controls at run time: those of the request's dropDownID, cascadeID and
// listID, else the first of each kind. Shows what was posted to it.
void writeDemoForm(Page& page);

}  // namespace tarlo::host
