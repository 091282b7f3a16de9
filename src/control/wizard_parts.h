#pragma once
// What the pages of the control wizards are put together from: the stepped dialog, frames of its
// steps, grids, and the filter area.

#include <memory>
#include <string>
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

// A page around a frame with the page of `action`, which ends there; and the end of a frame's page.
void writeFrameWrapper(Page& page, std::string_view action);
void endFrame(Page& page);

// A grid of a wizard's frame, to choose one row from: id "SearchTable", no menu, set up but for
// what the caller sets.
std::shared_ptr<Object> choiceGrid(Page& page, std::string_view title, std::string_view sql,
                                   int pageSize);
// The markup of the grid that shows what a list looks like: its columns, and rows if the statement
// gives any. `titles` are joined by "|". Raises what the grid raises.
std::string listGrid(Page& page, std::string_view sql, std::string_view titles,
                     std::string_view width);

// The rows of a control's filter as the wizards draw them: one row of column, operator, value and
// logic, further rows as the logic asks for them. `fields` is a combo box's data, `width` that of
// its box in pixels.
std::string filterArea(std::string_view width, std::string_view fields);

// What a further row is copied from.
enum class FirstRow {
  AsDrawn,   // the row as it was when the script came
  AsStands,  // the row as it is now
};
// The functions behind the area.
std::string filterScript(FirstRow copy);

}  // namespace tarlo::control
