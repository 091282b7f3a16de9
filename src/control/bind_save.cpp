// The save of the bind wizard.

#include "control/bind_wizard.h"
#include "control/control_answers.h"
#include "control/control_definition.h"
#include "control/control_store.h"
#include "frame/data.h"
#include "metadata/operations.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using variant::spliced;

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
  binding.row.scheme = spliced(page.request.value("modelid"));
  const std::string posted = spliced(page.request.value("queryid"));
  const auto parts = text::split(posted, "|");
  if (parts.size() == 2) {
    binding.original = parts[0];
    binding.field = parts[1];
  }
  return binding;
}

// Asked before anything else, so a scheme that is none raises here.
bool isTaken(Page& page, const ControlRow& row) {
  return frame::execSQLRows(
             page, Variant("select QF_ID from Zembra_Query_Field where QF_Name='" + row.name +
                           "' and QF_NameID=" + row.scheme + " and Zembra_Flag<>0"))
      .isArray();
}

// Whether a relation joins the main tables of both schemes by the field, on whichever side.
bool areRelated(Page& page, const Binding& binding) {
  const std::string mine =
      spliced(metadata::KeyField2TableID(page, Variant(binding.row.scheme), false));
  const Variant owner = frame::execSQLRows(
      page, Variant("select QF_NameID from Zembra_Query_Field where QF_ID=" + binding.original));
  const std::string other =
      spliced(metadata::KeyField2TableID(page, owner.array().at(0, 0), false));
  std::string sql = "select Zembra_ID from Zembra_DataDict_Relation where (DDR_MainTableID=";
  sql.append(mine).append(" and DDR_RelationTableID=").append(other);
  sql.append(" and DDR_MainFieldID=").append(binding.field).append(" ) or ( DDR_MainTableID=");
  sql.append(other).append(" and DDR_RelationTableID=").append(mine);
  sql.append(" and DDR_RelationFieldID=").append(binding.field).append(")");
  return frame::execSQLRows(page, Variant(sql)).isArray();
}

// The definition goes in as read, its quotes not doubled: a template that has any cannot be bound.
std::string insertOf(const Binding& binding, const Array& original) {
  const auto cell = [&](std::ptrdiff_t column) { return spliced(original.at(column, 0)); };
  std::string sql =
      "insert Zembra_Query_Field(QF_Name,QF_Desc,QF_NameID,QF_Field,QF_Table,QF_CField,QF_CTable,"
      "QF_Relation,QF_FieldType,Zembra_Flag,QF_System) values('";
  for (const std::string& value :
       {binding.row.name, binding.row.remark, binding.row.scheme, cell(0), cell(1), cell(2),
        cell(3), cell(4) + std::string(kPartMark) + binding.field, cell(5)}) {
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
  const Variant original = frame::execSQLRows(
      page, Variant("select QF_Field,QF_Table,QF_CField,QF_CTable,QF_Relation,QF_FieldType from "
                    "Zembra_Query_Field where QF_ID = " +
                    binding.original));
  if (!original.isArray()) return page.response.write("</script>");
  std::string sql = insertOf(binding, original.array());
  ErrorState err;
  const bool isStored = runs(page, err, sql);
  std::string script = "<script>";
  if (isStored) {
    script.append(kNextStep).append("\r\n").append(kReloadOpenerGrid);
  } else {
    script.append(kNotSaveable);
  }
  page.response.write(script.append("</script>"));
}

}  // namespace tarlo::control
