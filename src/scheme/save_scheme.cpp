#include "scheme/save_scheme.h"

#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "scheme/posted_definition.h"
#include "scheme/save_statement.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

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
  const auto doubled = [&](std::string_view key) { return text::doubledQuotes(value(key)); };
  SchemeRow row;
  row.isChange = value("type") == "1";
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
  const Variant rows = frame::execSQLRows(page, sql);
  return rows.isArray() && variant::toInt32(rows.array().at(0, 0)) > 0;
}

std::string keyFieldOf(Page& page, const Variant& table) {
  return spliced(frame::firstCell(
      page, "select Zembra_ID from Zembra_DataDict_Field where DDF_TableID=" + spliced(table) +
                " and DDF_Type=1"));
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
  std::string sql(saveStatement(row));
  err.clear();
  err.run([&] { frame::execSQLLogged(page, sql); });
  return err.failed() ? kNotWritten : kSaved;
}

}  // namespace

void addSearch(Page& page) {
  ErrorState err;
  SchemeRow row;
  err.run([&] { row = postedRow(page); });
  page.response.write(save(page, std::move(row)));
}

}  // namespace tarlo::scheme
