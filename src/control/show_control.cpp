#include "control/show_control.h"

#include "control/control_definition.h"
#include "control/control_statement.h"
#include "control/list_grid.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/sibling_calls.h"
#include "frame/template.h"
#include "metadata/control_statements.h"
#include "services/data_sources.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"
#include "variant/text.h"

namespace tarlo::control {
namespace {

using frame::Template;
using variant::spliced;

// What getControlSQL gives for the posted control: a definition's statement and what follows it.
struct Definition {
  std::string statement;
  std::string rest;
};

Definition storedDefinition(Page& page, ControlKind kind) {
  const Variant stored = metadata::getControlSQL(page, page.request.value("id"),
                                                 Variant(static_cast<int>(kind)), false);
  const std::string text = spliced(stored);
  const auto parts = variant::split(text, kPartMark);
  const auto part = [&](std::size_t i) {
    return i < parts.size() ? std::string(parts[i]) : std::string();
  };
  return {part(0), part(1)};
}

std::string optionsOf(Page& page, const std::string& statement) {
  return spliced(services::GetComboBoxXMLs(page, Variant(statement)));
}

// The list's statement made empty. A grouped one keeps its rows' columns and loses the rows.
std::string withoutRows(const std::string& statement) {
  if (statement.find(" group by ") != std::string::npos) return statement + " having 1 = 0";
  return statement + std::string(conditionWord(statement)) + "1 = 0";
}

Variant kindOf(Page& page) {
  ErrorState err;
  const Variant rows = err.value([&] {
    return frame::execSQLRows(page, "select QF_FieldType from Zembra_Query_Field where QF_ID = " +
                                        spliced(page.request.value("id")));
  });
  return rows.isArray() ? rows.array().at(0, 0) : Variant(1);
}

Variant bodyOf(Page& page, const Variant& kind) {
  if (variant::equalsAsText(kind, "1")) return showSearchDlg_UsrField1(page);
  if (variant::equalsAsText(kind, "2")) return showSearchDlg_UsrField2(page);
  if (variant::equalsAsText(kind, "3")) return showSearchDlg_UsrField3(page);
  return {};
}

}  // namespace

void showSearchDlg_UsrField(Page& page) {
  const auto dialog = page.server.createObject("TarloDialog.SingleDialog");
  frame::connectToPage(page, *dialog);
  dialog->put("title", "控件预览");
  dialog->put("ViewType", 2);
  dialog->put("addjs", "");
  dialog->put("bodyHtml", bodyOf(page, kindOf(page)));
  dialog->put("bgcolor", "menu");
  frame::callMethod(*dialog, "writeDialog");
}

Variant showSearchDlg_UsrField1(Page& page) {
  static const Template body(embedded::control_pages::find("show_drop_down.html"));
  const Definition control = storedDefinition(page, ControlKind::DropDown);
  return Variant(body.fill({{"options", optionsOf(page, control.statement)}}));
}

Variant showSearchDlg_UsrField2(Page& page) {
  static const Template body(embedded::control_pages::find("show_cascade.html"));
  const Definition control = storedDefinition(page, ControlKind::Cascade);
  return Variant(
      body.fill({{"levels", control.rest}, {"options", optionsOf(page, control.statement)}}));
}

Variant showSearchDlg_UsrField3(Page& page) {
  static const Template body(embedded::control_pages::find("show_list.html"));
  const Definition control = storedDefinition(page, ControlKind::List);
  ErrorState err;
  const Variant grid = err.value(
      [&] { return listGrid(page, withoutRows(control.statement), control.rest, "100%"); });
  return Variant(body.fill({{"grid", spliced(grid)}}));
}

}  // namespace tarlo::control
