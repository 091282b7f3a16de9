// The save of the bind wizard.

#include "control/control_store.h"
#include "control/operations.h"
#include "control/posted_control.h"
#include "frame/data.h"
#include "metadata/stored_controls.h"
#include "metadata/stored_schemes.h"
#include "text/pieces.h"

namespace tarlo::control {
namespace {

constexpr std::string_view kNoBoundName =
    "<script>parent.sAlert('此控件名称不能为空，请填写名称！');</script>";
constexpr std::string_view kBoundNameTaken =
    "<script>parent.sAlert ('此控件名称已存在，请使用另一名称！');</script>";
constexpr std::string_view kNotRelated =
    "<script>parent.sAlert("
    "'此模板控件不能跟此查询方案关联，请先在数据库中设置相关关联！');</script>";

struct Binding {
  ControlRow row;        // name, remark and the user's scheme
  std::string original;  // QF_ID of the template
  std::string field;     // by which the main tables are related
};

Binding postedBinding(Page& page) {
  Binding binding;
  readNameAndRemark(page, binding.row);
  binding.row.scheme = posted(page, "modelid");
  const std::string chosen = posted(page, "queryid");
  const auto parts = text::split(chosen, "|");
  if (parts.size() == 2) {
    binding.original = parts[0];
    binding.field = parts[1];
  }
  return binding;
}

// Asked before anything else, so a scheme that is none raises here.
bool isTaken(Page& page, const ControlRow& row) {
  return !frame::rows(page, "select QF_ID from Zembra_Query_Field where QF_Name='" + row.name +
                                "' and QF_NameID=" + row.scheme + " and Zembra_Flag<>0")
              .empty();
}

// Whether a relation joins the main tables of both schemes by the field, on whichever side.
bool areRelated(Page& page, const Binding& binding) {
  const std::string mine = metadata::keyTable(page, binding.row.scheme).value_or("-1");
  const frame::Rows owner =
      frame::rows(page, "select QF_NameID from Zembra_Query_Field where QF_ID=" + binding.original);
  const std::string other = metadata::keyTable(page, owner.front().text(0)).value_or("-1");
  std::string sql = "select Zembra_ID from Zembra_DataDict_Relation where (DDR_MainTableID=";
  sql.append(mine).append(" and DDR_RelationTableID=").append(other);
  sql.append(" and DDR_MainFieldID=").append(binding.field).append(" ) or ( DDR_MainTableID=");
  sql.append(other).append(" and DDR_RelationTableID=").append(mine);
  sql.append(" and DDR_RelationFieldID=").append(binding.field).append(")");
  return !frame::rows(page, sql).empty();
}

// The definition goes in as read, its quotes not doubled: a template that has any cannot be bound.
std::string insertOf(const Binding& binding, const frame::Row& original) {
  std::string sql =
      "insert Zembra_Query_Field(QF_Name,QF_Desc,QF_NameID,QF_Field,QF_Table,QF_CField,QF_CTable,"
      "QF_Relation,QF_FieldType,Zembra_Flag,QF_System) values('";
  for (const std::string& value :
       {binding.row.name, binding.row.remark, binding.row.scheme, original.text(0),
        original.text(1), original.text(2), original.text(3),
        metadata::withPart(original.text(4), binding.field), original.text(5)}) {
    sql.append(value).append("','");
  }
  return sql.append("1','0')");
}

}  // namespace

void addSearchDlg_UsrModel3(Page& page) {
  const Binding binding = postedBinding(page);
  if (!hasName(binding.row)) return page.response.write(kNoBoundName);
  if (isTaken(page, binding.row)) return page.response.write(kBoundNameTaken);
  if (!areRelated(page, binding)) return page.response.write(kNotRelated);
  const frame::Rows original =
      frame::rows(page,
                  "select QF_Field,QF_Table,QF_CField,QF_CTable,QF_Relation,QF_FieldType from "
                  "Zembra_Query_Field where QF_ID = " +
                      binding.original);
  if (original.empty()) return page.response.write("</script>");
  std::string sql = insertOf(binding, original.front());
  std::string script = "<script>";
  if (runsLogged(page, sql)) {
    script.append(kNextStep).append("\r\n").append(kReloadOpenerGrid);
  } else {
    script.append(kNotSaveable);
  }
  page.response.write(script.append("</script>"));
}

}  // namespace tarlo::control
