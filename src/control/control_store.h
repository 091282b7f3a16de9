#pragma once
// Rows of control schemes: the name test and the INSERT that all wizards write, and what the saves
// answer, as script.

#include <string>
#include <string_view>

#include "control/control.h"
#include "frame/page.h"

namespace tarlo::control {

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

// Runs a statement of the system's own through the operation log; whether it ran. The text is then
// what the log has, "Batch update" for a long one. Never raises.
bool runsLogged(Page& page, std::string& sql);
// The same for a statement that a designer has put together, to see whether it runs. What is drawn
// or stored afterwards is the text that this leaves.
bool runsAsTest(Page& page, std::string& sql);

std::string asScript(std::string_view text);

inline constexpr std::string_view kNoName = "<script>parent.sAlert('方案名称不能为空！');</script>";
inline constexpr std::string_view kNameTaken =
    "parent.sAlert('此查询方案下的控件关系方案名称已存在，请使用另一名称！');";
inline constexpr std::string_view kNotSaved = "parent.sAlert('方案保存时出错！');";
inline constexpr std::string_view kNotSaveable =
    "parent.sAlert('得到的查询语句有错误，无法保存！');";
inline constexpr std::string_view kOneLevel =
    "<script>parent.sAlert('只选择了一层，不能做级联！');</script>";
inline constexpr std::string_view kReloadOpenerGrid =
    "parent.dialogArguments.SearchTable.reload();";
inline constexpr std::string_view kNextStep = "window.top.switchStep();";

}  // namespace tarlo::control
