#include "control/show_control.h"

#include "control/control_definition.h"
#include "control/control_statement.h"
#include "control/list_grid.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/sibling_calls.h"
#include "frame/statement_scope.h"
#include "frame/template.h"
#include "metadata/operations.h"
#include "services/cascade_levels.h"
#include "services/data_sources.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

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
  const auto parts = text::split(text, kPartMark);
  const auto part = [&](std::size_t i) {
    return i < parts.size() ? std::string(parts[i]) : std::string();
  };
  return {part(0), part(1)};
}

// The list's statement made empty. A grouped one keeps its rows' columns and loses the rows.
std::string withoutRows(const std::string& statement) {
  if (statement.find(" group by ") != std::string::npos) return statement + " having 1 = 0";
  return statement + std::string(conditionWord(statement)) + "1 = 0";
}

Variant kindOf(Page& page) {
  ErrorState err;
  Variant kind(1);
  err.run([&] {
    kind = frame::firstCell(page,
                            "select QF_FieldType from Zembra_Query_Field where QF_ID = " +
                                spliced(page.request.value("id")),
                            kind);
  });
  return kind;
}

// How a control's body is laid out.
struct Layout {
  std::string_view opening;
  std::string_view size;
};

constexpr Layout kUserLayout = {"<br><br>", "width=\"90%\" height=\"90%\""};
// The dialog of a template has the opening lines itself.
constexpr Layout kTemplateDropDown = {"", "width=\"90%\""};
constexpr Layout kTemplateCascade = {"", "width=\"600\" height=\"200\""};

Variant dropDownBody(Page& page, const Layout& layout) {
  static const Template body(embedded::control_pages::find("show_drop_down.html"));
  const Definition control = storedDefinition(page, ControlKind::DropDown);
  return Variant(body.fill({{"opening", layout.opening},
                            {"size", layout.size},
                            {"options", services::storedOptions(page, control.statement)}}));
}

Variant cascadeBody(Page& page, const Layout& layout) {
  static const Template body(embedded::control_pages::find("show_cascade.html"));
  const Definition control = storedDefinition(page, ControlKind::Cascade);
  services::offerCascade(page, control.rest, frame::kDesignersRights);
  return Variant(body.fill({{"opening", layout.opening},
                            {"size", layout.size},
                            {"levels", control.rest},
                            {"options", services::storedOptions(page, control.statement)}}));
}

Variant userBody(Page& page) {
  const Variant kind = kindOf(page);
  if (variant::equalsAsText(kind, "1")) return showSearchDlg_UsrField1(page);
  if (variant::equalsAsText(kind, "2")) return showSearchDlg_UsrField2(page);
  if (variant::equalsAsText(kind, "3")) return showSearchDlg_UsrField3(page);
  return {};
}

Variant templateBody(Page& page) {
  const Variant kind = kindOf(page);
  std::string body = "<br><br>";
  if (variant::equalsAsText(kind, "1")) body += showSearchDlg_sysField1(page).text();
  if (variant::equalsAsText(kind, "2")) body += showSearchDlg_sysField2(page).text();
  return Variant(std::move(body));
}

// The body is made when the dialog stands.
void writeShowDialog(Page& page, std::string_view title, Variant (*body)(Page& page)) {
  const auto dialog = page.server.createObject("TarloDialog.SingleDialog");
  frame::connectToPage(page, *dialog, frame::kSessionAndResponse);
  dialog->put("title", title);
  dialog->put("ViewType", 2);
  dialog->put("addjs", "");
  dialog->put("bodyHtml", body(page));
  dialog->put("bgcolor", "menu");
  frame::callMethod(*dialog, "writeDialog");
}

}  // namespace

void showSearchDlg_UsrField(Page& page) {
  writeShowDialog(page, "控件预览", userBody);
}

Variant showSearchDlg_UsrField1(Page& page) {
  return dropDownBody(page, kUserLayout);
}

Variant showSearchDlg_UsrField2(Page& page) {
  return cascadeBody(page, kUserLayout);
}

Variant showSearchDlg_UsrField3(Page& page) {
  static const Template body(embedded::control_pages::find("show_list.html"));
  const Definition control = storedDefinition(page, ControlKind::List);
  ErrorState err;
  const Variant grid = err.value(
      [&] { return listGrid(page, withoutRows(control.statement), control.rest, "100%"); });
  return Variant(body.fill({{"grid", spliced(grid)}}));
}

void showSearchDlg_sysField(Page& page) {
  writeShowDialog(page, "模板控件预览", templateBody);
}

Variant showSearchDlg_sysField1(Page& page) {
  return dropDownBody(page, kTemplateDropDown);
}

Variant showSearchDlg_sysField2(Page& page) {
  return cascadeBody(page, kTemplateCascade);
}

}  // namespace tarlo::control
