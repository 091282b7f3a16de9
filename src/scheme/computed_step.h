#pragma once
// The step in which a designer writes computed fields: names, and expressions over the fields of
// the main table and of the selected relations. Nothing judges an expression here; the database
// does, at the preview.

#include "frame/page.h"

namespace tarlo::scheme {

// Request: `sTable`, `multi` (selected relations); `type` 1 with `prikeyid` restores the scheme's
// list. Its result is what the page's scripts leave in `divHTML`.
void addSearchDlg2(Page& page);

}  // namespace tarlo::scheme
