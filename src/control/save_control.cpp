#include "control/save_control.h"

#include <algorithm>

#include "control/control_answers.h"
#include "control/control_definition.h"
#include "control/control_filter.h"
#include "control/control_statement.h"
#include "control/scheme_columns.h"
#include "frame/data.h"
#include "frame/statement_scope.h"
#include "metadata/operations.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using text::replace;
using variant::spliced;

constexpr std::string_view kRefusedDropDown =
    "parent.sAlert('得到的查询语句有错误，无法保存！\\n请检查主表关联字段是否已正确选择！');";
constexpr std::string_view kRefusedCascade = "top.sAlert('得到的查询语句有错误，无法保存！');";
constexpr std::string_view kCascadeNameTaken =
    "<script>parent.sAlert "
    "('此查询方案下的控件关系方案名称已存在，请使用另一名称！');</script>";
constexpr std::string_view kCascadeNotSaved = "<script>parent.sAlert('方案保存时出错！');</script>";
constexpr std::string_view kCascadeSaved =
    "<script>parent.sAlert('方案成功保存！');parent.dialogArguments.window.location.reload();\r\n"
    "top.window.close();</script>";
constexpr std::string_view kSaved =
    "        window.top.switchStep(); \r\nparent.dialogArguments.window.location.reload();";

// The row that was posted, for the scheme `id`.
ControlRow postedRow(Page& page, ControlKind kind) {
  ControlRow row;
  row.kind = kind;
  row.scheme = spliced(page.request.value("id"));
  readNameAndRemark(page, row);
  return row;
}

// Name test and INSERT; gives the answer's script.
std::string_view store(Page& page, const ControlRow& row) {
  ErrorState err;
  if (isNameTaken(page, row)) return kNameTaken;
  std::string sql = insertStatement(row);
  if (row.kind == ControlKind::DropDown) sql = withoutLineEnds(sql);
  return runs(page, err, sql) ? kSaved : kNotSaved;
}

std::string mainTableName(Page& page, const std::string& scheme) {
  const Variant table = metadata::KeyField2TableID(page, Variant(scheme), false);
  const Variant rows = metadata::getTableName_Query(page, table);
  return rows.isArray() ? spliced(rows.array().at(0, 0)) : "";
}

// The select list of a list's statement behind the row id: the chosen columns of the scheme, and
// the scheme's statement from its FROM on. A column that is not there is left out.
std::string listColumns(Page& page, const std::string& scheme) {
  ErrorState err;
  SchemeColumns columns;
  err.run([&] { columns = SchemeColumns(page, scheme); });
  std::string text;
  for (const std::string& number : chosenColumns(spliced(page.request.value("viewfield")))) {
    err.run([&] { text += columns.selectItem(number); });
  }
  err.run([&] { text += fromPart(metadata::getQuerySQL(page, Variant(scheme), false)); });
  return text;
}

// The statement with the scheme's key as row id, or, where the key cannot stand in it, as beside a
// grouping, with a constant. "" when it runs neither way.
std::string listStatement(Page& page, const std::string& scheme) {
  ErrorState err;
  std::string sql = "select " + spliced(metadata::getQueryKeyField(page, Variant(scheme), false)) +
                    listColumns(page, scheme);
  err.run([&] { frame::asDesigner(page, [&] { frame::execSQL(page, sql); }); });
  if (!err.failed()) return sql;
  sql = "select 1 as tempidcolumn_V1," + sql.substr(std::min(sql.find(',') + 1, sql.size()));
  return runsAsTest(page, err, sql) ? sql : "";
}

}  // namespace

void savesearch_UsrField(Page& page) {
  const Variant kind = page.request.value("fieldtype");
  if (variant::equalsAsText(kind, "1")) savesearch_UsrField1(page);
  if (variant::equalsAsText(kind, "2")) savesearch_UsrField2(page);
  if (variant::equalsAsText(kind, "3")) savesearch_UsrField3(page);
}

void savesearch_UsrField1(Page& page) {
  ControlRow row = postedRow(page, ControlKind::DropDown);
  if (!hasName(row)) return page.response.write(kNoName);
  const ControlColumns columns = postedColumns(page);
  row.columns = ",";
  describeColumns(page, columns, row);
  const std::string filter =
      compileControlFilter(spliced(page.request.value("filter")), FilterUse::SaveUserControl);
  std::string sql = oneTableStatement(columns.value, columns.text, filter);
  ErrorState err;
  const bool isGood = runsAsTest(page, err, sql);
  page.response.write("<script>");
  if (isGood) {
    sql.append(kPartMark).append(spliced(page.request.value("relfield")));
    row.definition = text::doubledQuotes(sql);
    page.response.write(store(page, row));
  } else {
    page.response.write(kRefusedDropDown);
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
  ErrorState err;
  if (!runsAsTest(page, err, sql)) return page.response.write(kRefusedCascade);
  if (isNameTaken(page, row)) return page.response.write(kCascadeNameTaken);
  // Quotes of the statement are not doubled here: one that has any fails the INSERT.
  row.definition = sql + std::string(kPartMark) + postedLevels(page, "Zembra_Flag <> 0");
  std::string insert = insertStatement(row);
  page.response.write(runs(page, err, insert) ? kCascadeSaved : kCascadeNotSaved);
}

void savesearch_UsrField3(Page& page) {
  ControlRow row = postedRow(page, ControlKind::List);
  if (!hasName(row)) return page.response.write(kNoName);
  const std::string sql = listStatement(page, row.scheme);
  page.response.write("<script>");
  if (sql.empty()) {
    page.response.write(kNotSaveable);
  } else {
    row.definition = text::doubledQuotes(sql) + std::string(kPartMark) + postedTitles(page);
    page.response.write(store(page, row));
  }
  page.response.write("</script>");
}

}  // namespace tarlo::control
