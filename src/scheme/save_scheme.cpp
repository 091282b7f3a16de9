#include "scheme/save_scheme.h"

#include <vector>

#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "scheme/operations.h"
#include "scheme/posted_definition.h"
#include "scheme/step_fields.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using text::doubledQuotes;
using variant::spliced;

// The answers, which run in the wizard's hidden frame. The first calls the frame's own message box,
// the others the top window's.
constexpr std::string_view kNoName =
    "<script>sAlert('查询方案名称不能为空,请输入一个名字！');</script>";
constexpr std::string_view kNameInUse =
    "<script>top.sAlert('查询方案名称已存在,请使用另一个名字！');</script>";
constexpr std::string_view kRefused = "<script>top.sAlert('查询方案数据错误',false);</script>";
constexpr std::string_view kNotWritten =
    "<script>top.sAlert('查询方案保存时出错！' , false );</script>";
constexpr std::string_view kSaved =
    "<script>window.top.switchStep();top.dialogArguments.window.location.reload();</script>";

SchemeRow postedRow(Page& page) {
  const auto value = [&](std::string_view key) { return spliced(page.request.value(key)); };
  const auto doubled = [&](std::string_view key) { return doubledQuotes(value(key)); };
  SchemeRow row;
  row.isChange = isChange(page);
  row.id = value("prikeyid");
  row.name = doubled("step4Name");
  row.description = doubled("step4Memo");
  row.kind = value("step4Sys");
  row.directory = value("step4Dic");
  row.user = spliced(page.session.get("usrid"));
  row.isMultiLevel = value("Mulrelation");
  row.definition = postedDefinition(page, Blanks::Kept);
  return row;
}

// Schemes that are deleted and rows of other features leave their names free.
bool isNameInUse(Page& page, const SchemeRow& row) {
  std::string sql = "select count(Query_Name) from Zembra_Query_Main where Query_Name = '" +
                    row.name + "' and Zembra_Flag <> 0 and Query_IsDataAlert = 0";
  if (row.isChange) sql += " and Query_ID<>" + row.id;
  return variant::toInt32(frame::firstCell(page, sql)) > 0;
}

std::string keyFieldOf(Page& page, const std::string& mainTable) {
  return frame::firstText(page, "select Zembra_ID from Zembra_DataDict_Field where DDF_TableID=" +
                                    mainTable + " and DDF_Type=1");
}

std::string_view save(Page& page, SchemeRow row) {
  if (text::trim(row.name).empty()) return kNoName;
  ErrorState err;
  bool inUse = false;
  // A test that fails does not stop the save.
  err.run([&] { inUse = isNameInUse(page, row); });
  if (inUse) return kNameInUse;
  std::string statement;
  err.run([&] { statement = compile::compileDefinition(page, row.definition); });
  err.clear();
  err.run([&] { frame::asDesigner(page, [&] { frame::execSQL(page, statement); }); });
  if (err.failed()) return kRefused;
  row.statement = statement;
  err.run([&] { row.keyField = keyFieldOf(page, row.definition.mainTable); });
  row.now = frame::currentDateTimeText();
  std::string sql = saveStatement(row);
  err.clear();
  err.run([&] { frame::execSQLLogged(page, sql); });
  return err.failed() ? kNotWritten : kSaved;
}

std::string updateStatement(const SchemeRow& row, bool hasStatistics) {
  const compile::Definition& definition = row.definition;
  std::string sql = "update Zembra_Query_Main set Query_Name='" + row.name;
  const auto set = [&](std::string_view column, std::string_view value) {
    sql.append("',").append(column).append("='").append(value);
  };
  set("Query_Desc", row.description);
  set("Query_Fields", doubledQuotes(row.statement));
  set("Query_HasStatic", hasStatistics ? "1" : "0");
  set("Query_Prikey", row.keyField);
  set("Query_System", row.kind);
  set("Query_Dic", row.directory);
  set("Zembra_ModiUser", row.user);
  set("Zembra_ModiDate", row.now);
  set("Query_MainTBID", definition.mainTable);
  set("Query_Vir", doubledQuotes(definition.computed));
  set("Query_Rel", doubledQuotes(definition.filter));
  set("Query_Static", doubledQuotes(definition.statistics));
  set("Query_Group", definition.grouping);
  if (!hasStatistics) {
    sql.append("',Query_MultiRel=").append(row.isMultiLevel);
    sql.append(",Query_MultiRelSel='").append(definition.relations);
  }
  return sql.append("' where Query_ID=").append(row.id);
}

std::string insertStatement(const SchemeRow& row, bool hasStatistics) {
  const compile::Definition& definition = row.definition;
  std::string sql =
      "insert into Zembra_Query_Main(Query_Name,Query_Desc,Query_Fields,Zembra_WriteDate,"
      "Query_Prikey,Query_System,Query_Dic,Zembra_User,Query_MainTBID,Query_Vir,Query_Rel,"
      "Query_Static,Query_Group,";
  sql += hasStatistics ? "Query_HasStatic)" : "Query_MultiRel,Query_MultiRelSel)";
  sql.append(" values('").append(row.name);
  const std::vector<std::string> values = {row.description,
                                           doubledQuotes(row.statement),
                                           row.now,
                                           row.keyField,
                                           row.kind,
                                           row.directory,
                                           row.user,
                                           definition.mainTable,
                                           doubledQuotes(definition.computed),
                                           doubledQuotes(definition.filter),
                                           doubledQuotes(definition.statistics),
                                           doubledQuotes(definition.grouping)};
  for (const std::string& value : values) sql.append("','").append(value);
  if (hasStatistics) return sql.append("','1')");
  sql.append("',").append(row.isMultiLevel).append(",'");
  return sql.append(definition.relations).append("')");
}

}  // namespace

std::string saveStatement(const SchemeRow& row) {
  const bool hasStatistics = !row.definition.statistics.empty();
  return row.isChange ? updateStatement(row, hasStatistics) : insertStatement(row, hasStatistics);
}

void addSearch(Page& page) {
  ErrorState err;
  SchemeRow row;
  err.run([&] { row = postedRow(page); });
  page.response.write(save(page, std::move(row)));
}

}  // namespace tarlo::scheme
