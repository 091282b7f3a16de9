#pragma once
// What the saves and previews answer, as script.

#include <string_view>

namespace tarlo::control {

inline constexpr std::string_view kNoName = "<script>parent.sAlert('方案名称不能为空！');</script>";
inline constexpr std::string_view kNameTaken =
    "parent.sAlert('此查询方案下的控件关系方案名称已存在，请使用另一名称！');";
inline constexpr std::string_view kNotSaved = "parent.sAlert('方案保存时出错！');";
inline constexpr std::string_view kNotSaveable =
    "parent.sAlert('得到的查询语句有错误，无法保存！');";
inline constexpr std::string_view kNotPreviewable =
    "<script>parent.sAlert('得到的查询语句有错误，无法预览！');</script>";
inline constexpr std::string_view kOneLevel =
    "<script>parent.sAlert('只选择了一层，不能做级联！');</script>";
inline constexpr std::string_view kReloadOpenerGrid =
    "parent.dialogArguments.SearchTable.reload();";
inline constexpr std::string_view kNextStep = "window.top.switchStep();";

}  // namespace tarlo::control
