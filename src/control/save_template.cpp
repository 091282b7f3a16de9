#include "control/save_template.h"

#include "control/control_answers.h"
#include "control/control_filter.h"
#include "control/template_definition.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using text::replace;
using variant::spliced;

std::string posted(Page& page, std::string_view key) {
  return spliced(page.request.value(key));
}

ControlRow templateRow(ControlKind kind, std::string scheme) {
  ControlRow row;
  row.kind = kind;
  row.controlClass = ControlClass::Template;
  row.scheme = std::move(scheme);
  return row;
}

bool isStored(Page& page, const ControlRow& row) {
  ErrorState err;
  std::string sql = insertStatement(row);
  return runs(page, err, sql);
}

std::string asScript(std::string_view text) {
  return "<script>" + std::string(text) + "</script>";
}

// The answer's script.
std::string saveDropDown(Page& page) {
  ControlRow row = templateRow(ControlKind::DropDown, posted(page, "queryid"));
  // Quotes are not doubled: a name with one fails the INSERT.
  row.name = posted(page, "QF_Name");
  row.remark = posted(page, "QF_Desc");
  const ControlColumns columns = postedTemplateColumns(page);
  row.columns = ",";
  describeTables(columns, row);
  const std::string filter =
      compileControlFilter(posted(page, "filter"), FilterUse::SaveTemplateControl);
  const std::string sql = templateDropDown(page, columns, filter);
  ErrorState err;
  std::string tested = sql;
  if (!runsAsTest(page, err, tested)) return std::string(kNotSaveable);
  if (isNameTaken(page, row)) return std::string(kNameTaken);
  row.definition = text::doubledQuotes(sql);
  if (!isStored(page, row)) return std::string(kNotSaved);
  return std::string(kReloadOpenerGrid).append(kNextStep);
}

}  // namespace

void savesearch_sysField(Page& page) {
  const Variant kind = page.request.value("fieldtype");
  if (variant::equalsAsText(kind, "1")) savesearch_sysField1(page);
  if (variant::equalsAsText(kind, "2")) savesearch_sysField2(page);
}

void savesearch_sysField1(Page& page) {
  page.response.write(asScript(saveDropDown(page)));
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
  row.definition.append(cascade->statement).append(kPartMark).append(cascade->levels);
  if (!isStored(page, row)) return page.response.write(asScript(kNotSaved));
  page.response.write(asScript("parent.sAlert('方案成功保存！');"));
  page.response.write(asScript(kReloadOpenerGrid));
  page.response.write(asScript(kNextStep));
}

}  // namespace tarlo::control
