#pragma once
// The frame of a dialog's page: a band with the title at the left, a body, a row of buttons below.
// A page writes the head, its body, the body's end, its buttons, then the foot. The dialog gives
// "-1" to its opener when it is closed any other way than by closeWebDialog.

#include <string_view>

#include "frame/page.h"

namespace tarlo::frame {

enum class DialogBody { WindowColour, White };

// `title` is page text and goes in unescaped.
void writeDialogHead(Page& page, std::string_view title, DialogBody body);
void writeDialogBodyEnd(Page& page);
void writeDialogFoot(Page& page);

}  // namespace tarlo::frame
