#pragma once
// What framed pages, dialogs and the steps of wizards begin and end with.

#include <string_view>

#include "frame/page.h"

namespace tarlo::frame {

// What every framed page and dialog tells the browser before its text: a page shows the state of
// the database, so nothing on the way may keep a copy of it.
void writeResponseSettings(Response& response);

// A dialog's page: a band with the title at the left, a body, a row of buttons below. A page writes
// the head, its body, the body's end, its buttons, then the foot. The dialog gives "-1" to its
// opener when it is closed any other way than by closeWebDialog.
enum class DialogBody { WindowColour, White };

// `title` is page text and goes in unescaped.
void writeDialogHead(Page& page, std::string_view title, DialogBody body);
void writeDialogBodyEnd(Page& page);
void writeDialogFoot(Page& page);

// A wizard's step is a page of its own, loaded into a frame of the wizard's dialog.

// The opening of the page up to the end of its head, and no more.
void writeStepOpening(Page& page);
// The opening, then the body's start in the dialog's colour. The page writes the rest, its end
// included.
void writeStepHead(Page& page);

}  // namespace tarlo::frame
