#pragma once
// What the previews of users' controls and of templates share.

#include <string>
#include <string_view>

#include "frame/page.h"

namespace tarlo::control {

struct DropDownLook {
  std::string_view size;    // style of the division around it
  bool keepsLastMark;       // whether the box's data end in ">>>>>>"
  std::string_view script;  // takes the division into the wizard and the wizard on
};

// Runs the statement through the operation log; when the database accepts it, writes the drop-down
// with the statement's rows and gives true. Never raises.
bool writeDropDownPreview(Page& page, const std::string& sql, const DropDownLook& look);

// The end of a preview in a dialog of its own: a button that closes it, and the dialog's foot.
void writePreviewEnd(Page& page);

}  // namespace tarlo::control
