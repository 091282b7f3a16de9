#pragma once
// The step in which a designer writes filter conditions: a growing list of rows of field,
// comparison, value and logic.

#include "frame/page.h"

namespace tarlo::scheme {

// Request: `sTable`, `Multi` (selected relations), `virtual` (computed fields, posted form); `type`
// 1 with `prikeyid` restores the scheme's conditions. Its result is what setfilter() leaves in the
// hidden field `filter`. Never raises.
void addSearchDlg3(Page& page);

}  // namespace tarlo::scheme
