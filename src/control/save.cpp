// Saves of the wizards that make users' controls and templates.

#include <algorithm>

#include "control/control_statement.h"
#include "control/operations.h"
#include "control/posted_control.h"
#include "frame/data.h"
#include "frame/statement_scope.h"
#include "metadata/dictionary.h"
#include "metadata/stored_schemes.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/error_state.h"

namespace tarlo::control {
namespace {

constexpr std::string_view kDropDownNotSaveable =
    "parent.sAlert('得到的查询语句有错误，无法保存！\\n请检查主表关联字段是否已正确选择！');";
constexpr std::string_view kRefusedCascade = "top.sAlert('得到的查询语句有错误，无法保存！');";
constexpr std::string_view kCascadeNameTaken =
    "<script>parent.sAlert "
    "('此查询方案下的控件关系方案名称已存在，请使用另一名称！');</script>";
constexpr std::string_view kCascadeSaved =
    "<script>parent.sAlert('方案成功保存！');parent.dialogArguments.window.location.reload();\r\n"
    "top.window.close();</script>";
constexpr std::string_view kSaved =
    "        window.top.switchStep(); \r\nparent.dialogArguments.window.location.reload();";

// The row that was posted, for the scheme `id`.
ControlRow postedRow(Page& page, ControlKind kind) {
  ControlRow row;
  row.kind = kind;
  row.scheme = posted(page, "id");
  readNameAndRemark(page, row);
  return row;
}

ControlRow templateRow(ControlKind kind, std::string scheme) {
  ControlRow row;
  row.kind = kind;
  row.controlClass = ControlClass::Template;
  row.scheme = std::move(scheme);
  return row;
}

bool isInserted(Page& page, const ControlRow& row) {
  const bool isUsersDropDown =
      row.kind == ControlKind::DropDown && row.controlClass == ControlClass::User;
  std::string sql = insertStatement(row);
  if (isUsersDropDown) sql = withoutLineEnds(sql);
  return runsLogged(page, sql);
}

// Name test and INSERT; gives the answer's script.
std::string_view store(Page& page, const ControlRow& row) {
  if (isNameTaken(page, row)) return kNameTaken;
  return isInserted(page, row) ? kSaved : kNotSaved;
}

std::string mainTableName(Page& page, const std::string& scheme) {
  const std::string table = metadata::keyTable(page, scheme).value_or("-1");
  return metadata::tableNames(page, table).value_or(metadata::TableNames{}).name;
}

// The select list of a list's statement behind the row id: the chosen columns of the scheme, and
// the scheme's statement from its FROM on. A column that is not there is left out.
std::string listColumns(Page& page, const std::string& scheme) {
  ErrorState err;
  SchemeColumns columns;
  err.run([&] { columns = SchemeColumns(page, scheme); });
  std::string text;
  for (const std::string& number : postedColumnNumbers(page)) {
    err.run([&] { text += columns.selectItem(number); });
  }
  err.run([&] { text += fromPart(page, scheme); });
  return text;
}

// The statement with the scheme's key as row id, or, where the key cannot stand in it, as beside a
// grouping, with a constant. "" when it runs neither way.
std::string listStatement(Page& page, const std::string& scheme) {
  std::string sql = text::joined(
      {"select ", metadata::keyColumn(page, scheme).value_or("-1"), listColumns(page, scheme)});
  ErrorState err;
  if (err.run([&] { frame::asDesigner(page, [&] { frame::execSQL(page, sql); }); })) return sql;
  sql = "select 1 as tempidcolumn_V1," + sql.substr(std::min(sql.find(',') + 1, sql.size()));
  return runsAsTest(page, sql) ? sql : "";
}

// The answer's script.
std::string saveTemplateDropDown(Page& page) {
  ControlRow row = templateRow(ControlKind::DropDown, posted(page, "queryid"));
  // Quotes are not doubled: a name with one fails the INSERT.
  row.name = posted(page, "QF_Name");
  row.remark = posted(page, "QF_Desc");
  const ControlColumns columns = postedTemplateColumns(page);
  row.columns = ",";
  describeTables(columns, row);
  const std::string filter =
      compileControlFilter(posted(page, "filter"), FilterUse::SaveTemplateControl);
  std::string sql = templateDropDown(page, columns, filter);
  if (!runsAsTest(page, sql)) return std::string(kNotSaveable);
  if (isNameTaken(page, row)) return std::string(kNameTaken);
  row.definition = text::doubledQuotes(sql);
  if (!isInserted(page, row)) return std::string(kNotSaved);
  return text::joined({kReloadOpenerGrid, kNextStep});
}

}  // namespace

void savesearch_UsrField(Page& page) {
  const std::string kind = posted(page, "fieldtype");
  if (kind == "1") savesearch_UsrField1(page);
  if (kind == "2") savesearch_UsrField2(page);
  if (kind == "3") savesearch_UsrField3(page);
}

void savesearch_UsrField1(Page& page) {
  ControlRow row = postedRow(page, ControlKind::DropDown);
  if (!hasName(row)) return page.response.write(kNoName);
  ControlColumns columns = postedColumns(page);
  columns.value = withoutLineEnds(columns.value);
  row.columns = ",";
  describeColumns(page, columns, row);
  const std::string filter =
      compileControlFilter(posted(page, "filter"), FilterUse::SaveUserControl);
  std::string sql = oneTableStatement(columns.value, columns.text, filter);
  const bool isGood = runsAsTest(page, sql);
  page.response.write("<script>");
  if (isGood) {
    row.definition = text::doubledQuotes(metadata::withPart(sql, posted(page, "relfield")));
    page.response.write(store(page, row));
  } else {
    page.response.write(kDropDownNotSaveable);
  }
  page.response.write("</script>");
}

void savesearch_UsrField2(Page& page) {
  ControlRow row = postedRow(page, ControlKind::Cascade);
  if (!hasName(row)) return page.response.write(kNoName);
  const ControlColumns columns = postedColumns(page);
  row.columns = columnPart(columns.value) + "," + columnPart(columns.text);
  describeColumns(page, columns, row);
  std::string sql = twoTableStatement(page, row.scheme, columns.value, columns.text);
  sql.append(conditionWord(sql)).append("[").append(mainTableName(page, row.scheme));
  sql.append("].Zembra_Flag <> 0");
  if (!runsAsTest(page, sql)) return page.response.write(kRefusedCascade);
  if (isNameTaken(page, row)) return page.response.write(kCascadeNameTaken);
  // Quotes of the statement are not doubled here: one that has any fails the INSERT.
  row.definition = metadata::withPart(sql, postedLevels(page, "Zembra_Flag <> 0"));
  if (isInserted(page, row)) return page.response.write(kCascadeSaved);
  page.response.write(asScript(kNotSaved));
}

void savesearch_UsrField3(Page& page) {
  ControlRow row = postedRow(page, ControlKind::List);
  if (!hasName(row)) return page.response.write(kNoName);
  const std::string sql = listStatement(page, row.scheme);
  page.response.write("<script>");
  if (sql.empty()) {
    page.response.write(kNotSaveable);
  } else {
    row.definition = metadata::withPart(text::doubledQuotes(sql), postedTitles(page));
    page.response.write(store(page, row));
  }
  page.response.write("</script>");
}

void savesearch_sysField(Page& page) {
  const std::string kind = posted(page, "fieldtype");
  if (kind == "1") savesearch_sysField1(page);
  if (kind == "2") savesearch_sysField2(page);
}

void savesearch_sysField1(Page& page) {
  page.response.write(asScript(saveTemplateDropDown(page)));
}

void savesearch_sysField2(Page& page) {
  const auto cascade = postedCascade(page);
  if (!cascade) return page.response.write(kOneLevel);
  page.response.write("<div id=\"prediv\">\r\n");
  ControlRow row = templateRow(ControlKind::Cascade, posted(page, "id"));
  readNameAndRemark(page, row);
  if (!hasName(row)) return page.response.write(kNoName);
  if (isNameTaken(page, row)) return page.response.write(asScript(kNameTaken));
  row.scheme = posted(page, "queryid");
  row.definition = metadata::withPart(cascade->statement, cascade->levels);
  if (!isInserted(page, row)) return page.response.write(asScript(kNotSaved));
  page.response.write(asScript("parent.sAlert('方案成功保存！');"));
  page.response.write(asScript(kReloadOpenerGrid));
  page.response.write(asScript(kNextStep));
}

}  // namespace tarlo::control
