#pragma once
// Pages of the wizards' frames: the empty page that a frame starts with, the lists to choose a
// scheme from, and the wrappers around a frame that no page links to any more. All are operations
// and raise what the grid raises.

#include "frame/page.h"

namespace tarlo::control {

void getQueryTable(Page& page);

// Users' schemes: without those with statistics unless `field1` is "3".
void addSearchDlg_UsrField1_1(Page& page);
// The same as a drop-down, by `contrltype`, put into the opener's division by script.
void addSearchDlg_UsrField1_2(Page& page);
// Around the wizard's first list.
void addSearchDlg_UsrField1(Page& page);

}  // namespace tarlo::control
