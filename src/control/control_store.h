#pragma once
// Rows of control schemes: the name test and the INSERT that all wizards write, and the delete.

#include <string>
#include <string_view>

#include "frame/page.h"
#include "variant/error_state.h"

namespace tarlo::control {

enum class ControlKind { DropDown = 1, Cascade = 2, List = 3 };
enum class ControlClass { User, Template };

// What goes into a row. All texts are spliced into the statement as they are: quotes are doubled
// by the caller, or deliberately not.
struct ControlRow {
  std::string name;
  std::string scheme;  // Query_ID, goes in without quotes
  std::string columns;
  std::string captions;
  std::string tables;
  std::string tableCaptions;
  std::string definition;
  std::string remark;
  ControlKind kind = ControlKind::DropDown;
  ControlClass controlClass = ControlClass::User;
};

std::string insertStatement(const ControlRow& row);

// Whether a control of the scheme has the name. A deleted cascade keeps its name taken, the other
// kinds' names are free again. A test that fails says no: the INSERT then fails as well, and says
// so. Never raises.
bool isNameTaken(Page& page, const ControlRow& row);

// The posted name and remark, quotes doubled.
void readNameAndRemark(Page& page, ControlRow& row);
bool hasName(const ControlRow& row);

// Runs a statement of the system's own through the operation log, with the error state cleared
// before. True when it ran. A long statement is "Batch update" afterwards, as the log has it.
bool runs(Page& page, ErrorState& err, std::string& sql);
// The same for a statement that a designer has put together, to see whether it runs.
bool runsAsTest(Page& page, ErrorState& err, std::string& sql);

}  // namespace tarlo::control
