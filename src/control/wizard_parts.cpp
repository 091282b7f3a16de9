#include "control/wizard_parts.h"

#include "embedded_control_pages.h"
#include "frame/dialog_frame.h"
#include "frame/page_text.h"
#include "frame/sibling_calls.h"
#include "frame/statement_scope.h"
#include "services/operations.h"
#include "variant/convert.h"

namespace tarlo::control {

using frame::PageText;

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

void writeFrameWrapper(Page& page, std::string_view action) {
  static const PageText wrapper(embedded::control_pages::find("frame_wrapper.html"));
  frame::writeStepOpening(page);
  wrapper.write(page.response, {{"action", action}});
}

void endFrame(Page& page) {
  page.response.write("</body>\r\n</html>\r\n");
}

std::shared_ptr<Object> choiceGrid(Page& page, std::string_view title, std::string_view sql,
                                   int pageSize) {
  auto grid = page.server.createObject("TarloTable.table");
  frame::connectToPage(page, *grid, frame::kGridContext);
  grid->put("id", "SearchTable");
  grid->put("SelectionStyle", 2);
  grid->put("title", title);
  grid->put("sql", sql);
  grid->put("Pagesize", pageSize);
  grid->put("showMenu", false);
  return grid;
}

std::string listGrid(Page& page, std::string_view sql, std::string_view titles,
                     std::string_view width) {
  const auto grid = choiceGrid(page, titles, sql, 10);
  grid->put("MultiPage", "true");
  grid->put("Width", width);
  grid->put("Search", "false");
  return variant::spliced(
      frame::asDesigner(page, [&] { return frame::callMethod(*grid, "getTableHtml"); }));
}

std::string filterArea(std::string_view width, std::string_view fields) {
  static const PageText area(embedded::control_pages::find("filter_area.html"));
  return area.fill({{"width", width}, {"fields", fields}});
}

std::string filterScript(FirstRow copy) {
  static const PageText script(embedded::control_pages::find("filter_area.js"));
  const bool isFresh = copy == FirstRow::AsStands;
  return script.fill(
      {{"first", isFresh ? "var divHTML;" : "var divHTML=relation2.innerHTML;"},
       {"fresh", isFresh ? "divHTML=relation2.children(0).innerHTML;\r\n\t\t" : ""}});
}

}  // namespace tarlo::control
