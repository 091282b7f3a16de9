#pragma once
// The stepped dialog of a control wizard.

#include <string_view>
#include <vector>

#include "frame/page.h"

namespace tarlo::control {

struct ControlDialog {
  std::string_view title;
  std::string_view script;
  std::string_view helpAction;  // whose help texts the help pane shows
};

struct ControlStep {
  std::string_view title;
  std::string_view content;
  std::string_view next;  // script; "" for the dialog's own
  std::string_view back;
};

// Raises what the dialog and the look-up of the help texts raise.
void writeControlDialog(Page& page, const ControlDialog& settings,
                        const std::vector<ControlStep>& steps);

}  // namespace tarlo::control
