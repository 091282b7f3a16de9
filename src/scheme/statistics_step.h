#pragma once
// The step in which a designer picks statistics and the fields to group by.

#include "frame/page.h"

namespace tarlo::scheme {

// Request: `sTable`, `multi` (selected relations), `virtual` (computed fields, posted form); `type`
// 1 with `prikeyid` restores the scheme's choice. Its result is what setGroupStats() leaves in the
// variable `StatsRecord` and the hidden field `group`. Never raises.
void addSearchDlg4(Page& page);

// The opening of a page and no more: kept for callers of its address.
void addSearchDlg5(Page& page);

}  // namespace tarlo::scheme
