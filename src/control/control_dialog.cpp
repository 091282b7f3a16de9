#include "control/control_dialog.h"

#include "frame/sibling_calls.h"
#include "services/operations.h"

namespace tarlo::control {

void writeControlDialog(Page& page, const ControlDialog& settings,
                        const std::vector<ControlStep>& steps) {
  const auto dialog = page.server.createObject("TarloDialog.WebDialog");
  frame::connectToPage(page, *dialog, frame::kSessionAndResponse);
  dialog->put("title", settings.title);
  dialog->put("TotalStep", static_cast<int>(steps.size()));
  dialog->put("addjs", settings.script);
  dialog->put("addHTML", "");
  dialog->put("FormAction", "TarloQuery.Zembra");
  dialog->put("HelpHtml", services::getActionHelp(page, settings.helpAction));
  dialog->put("HelpTitle", services::getActionHelpTitle(page, settings.helpAction));
  for (const ControlStep& step : steps) {
    frame::callMethod(*dialog, "addStep", {step.title, step.content, step.next, step.back});
  }
  frame::callMethod(*dialog, "writeDialog");
}

}  // namespace tarlo::control
