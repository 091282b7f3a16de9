#pragma once
// The wizard's last step: name, class, directory and description of the scheme.

#include "frame/page.h"

namespace tarlo::scheme {

// Request: `prikeyid` presets what the scheme has. Never raises.
void addSearchDlg6(Page& page);

}  // namespace tarlo::scheme
