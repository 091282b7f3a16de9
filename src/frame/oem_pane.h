#pragma once
// The pane that shows whose installation this is: the other text of the side pane, beside the links
// to neighbouring modules.

#include <string>

#include "frame/page.h"

namespace tarlo::frame {

// The pane's text around value D of the policy "OEM信息", cut at its first comma, line ends as
// <br>. Raises error 5 when there is no such policy, 94 when the value is Null, and DatabaseError.
std::string getOEMInfoHTML(Page& page);

}  // namespace tarlo::frame
