#pragma once
// The step in which a designer picks the relations that a scheme follows, and which of the optional
// steps come next.

#include "frame/page.h"

namespace tarlo::scheme {

// Request: `sTable` main table; `mul` 1 offers the relations of the neighbours too; `type` 1 with
// `prikeyid` selects what the scheme has selected. Its result is what the page's scripts leave in
// `MulRel` and `virtul`. Raises nothing of its own; what fails leaves its list empty.
void addSearchDlg1(Page& page);

}  // namespace tarlo::scheme
