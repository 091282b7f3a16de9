#pragma once
// The head that the pages of a wizard's steps have in common: each is a page of its own, loaded
// into a frame of the wizard's dialog.

#include "frame/page.h"

namespace tarlo::frame {

// The opening of the page up to the end of its head, and no more.
void writeStepOpening(Page& page);
// The opening, then the body's start in the dialog's colour. The page writes the rest, its end
// included.
void writeStepHead(Page& page);

}  // namespace tarlo::frame
