#pragma once
// Pages of the wizards' frames: the empty page that a frame starts with, the lists to choose a
// scheme from, and the wrappers around a frame that no page links to any more. All but the last two
// are operations and raise what the grid raises.

#include <string_view>

#include "frame/page.h"

namespace tarlo::control {

void getQueryTable(Page& page);

// Users' schemes: without those with statistics unless `field1` is "3".
void addSearchDlg_UsrField1_1(Page& page);
// The same as a drop-down, by `contrltype`, put into the opener's division by script.
void addSearchDlg_UsrField1_2(Page& page);
// Around the wizard's first list.
void addSearchDlg_UsrField1(Page& page);

// System schemes, and the kind of the template.
void addSearchDlg_sysfield1_1(Page& page);
void addSearchDlg_sysfield1(Page& page);

// A page around a frame with the page of `action`, which ends there; and the end of
// a frame's page.
void writeFrameWrapper(Page& page, std::string_view action);
void endFrame(Page& page);

}  // namespace tarlo::control
