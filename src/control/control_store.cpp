#include "control/control_store.h"

#include "control/posted_control.h"
#include "frame/data.h"
#include "frame/statement_scope.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/error_state.h"

namespace tarlo::control {
namespace {

// What ends the row's values. Lists have always named their class, cascades and drop-downs of
// users leave it to the column's default.
std::string_view closing(const ControlRow& row) {
  const bool isTemplate = row.controlClass == ControlClass::Template;
  switch (row.kind) {
    case ControlKind::DropDown:
      return isTemplate ? ",1,1)" : ",1)";
    case ControlKind::Cascade:
      return isTemplate ? ",2,1)" : ",2)";
    case ControlKind::List:
      return " , 3 , 0 )";
    case ControlKind::Unknown:
      break;
  }
  return {};
}

bool namesClass(const ControlRow& row) {
  return row.kind == ControlKind::List || row.controlClass == ControlClass::Template;
}

}  // namespace

std::string insertStatement(const ControlRow& row) {
  std::string sql =
      "insert Zembra_Query_Field(QF_Name,QF_NameID,QF_Field,QF_CField,QF_Table,QF_CTable,"
      "QF_Relation,QF_Desc,QF_FieldType";
  sql.append(namesClass(row) ? ",QF_System) values('" : ") values('");
  sql.append(row.name).append("',").append(row.scheme).append(",'").append(row.columns);
  for (const std::string* text :
       {&row.captions, &row.tables, &row.tableCaptions, &row.definition, &row.remark}) {
    sql.append("','").append(*text);
  }
  return sql.append("'").append(closing(row));
}

bool isNameTaken(Page& page, const ControlRow& row) {
  std::string sql = "select QF_Name from Zembra_Query_Field where QF_Name = '" + row.name +
                    "' and QF_NameID = " + row.scheme;
  if (row.kind != ControlKind::Cascade) {
    sql += " and Zembra_Flag <> 0";
    if (row.controlClass == ControlClass::Template) sql += " and QF_System=1";
  }
  ErrorState err;
  return !err.value([&] { return frame::rows(page, sql); }).empty();
}

void readNameAndRemark(Page& page, ControlRow& row) {
  row.name = text::doubledQuotes(posted(page, "QF_Name"));
  row.remark = text::doubledQuotes(posted(page, "QF_Desc"));
}

bool hasName(const ControlRow& row) {
  return !text::trim(row.name).empty();
}

bool runsLogged(Page& page, std::string& sql) {
  ErrorState err;
  return err.run([&] { frame::execSQLLogged(page, sql); });
}

bool runsAsTest(Page& page, std::string& sql) {
  return frame::asDesigner(page, [&] { return runsLogged(page, sql); });
}

std::string asScript(std::string_view text) {
  return text::joined({"<script>", text, "</script>"});
}

}  // namespace tarlo::control
