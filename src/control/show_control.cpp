// Stored controls as they look. Their definitions come as forms get them: showing a list runs its
// statement, and is in the operation log.

#include "control/control.h"
#include "control/control_statement.h"
#include "control/operations.h"
#include "control/posted_control.h"
#include "control/wizard_parts.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/page_text.h"
#include "frame/sibling_calls.h"
#include "frame/statement_scope.h"
#include "metadata/stored_controls.h"
#include "services/cascade_levels.h"
#include "services/data_sources.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::control {
namespace {

using frame::PageText;
using metadata::ControlDefinition;
using variant::spliced;

// What a form is answered stands in the statement's place where it gets none; no database runs it.
ControlDefinition storedDefinition(Page& page, ControlKind kind) {
  using Answer = metadata::FormControl::Answer;
  metadata::FormControl stored =
      metadata::formControl(page, spliced(page.request.value("id")), static_cast<int>(kind));
  if (stored.answer == Answer::Unknown) return {"-1"};
  if (stored.answer == Answer::OtherKind) return {"-2"};
  return stored.answer == Answer::Given ? std::move(stored.definition) : ControlDefinition{};
}

// The list's statement made empty. A grouped one keeps its rows' columns and loses the rows.
std::string withoutRows(const std::string& statement) {
  if (statement.find(" group by ") != std::string::npos) return statement + " having 1 = 0";
  return statement + std::string(conditionWord(statement)) + "1 = 0";
}

// A control that is not there is taken for a drop-down.
std::string kindOf(Page& page) {
  std::string kind = "1";
  ErrorState err;
  err.run([&] {
    kind = spliced(frame::firstCell(
        page, "select QF_FieldType from Zembra_Query_Field where QF_ID = " + posted(page, "id"),
        1));
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
constexpr Layout kTemplateLayout = {"", "width=\"90%\""};
constexpr Layout kTemplateCascadeLayout = {"", "width=\"600\" height=\"200\""};

std::string dropDownBody(Page& page, const Layout& layout) {
  static const PageText body(embedded::control_pages::find("show_drop_down.html"));
  const ControlDefinition control = storedDefinition(page, ControlKind::DropDown);
  return body.fill({{"opening", layout.opening},
                    {"size", layout.size},
                    {"options", services::storedOptions(page, control.statement)}});
}

std::string cascadeBody(Page& page, const Layout& layout) {
  static const PageText body(embedded::control_pages::find("show_cascade.html"));
  const ControlDefinition control = storedDefinition(page, ControlKind::Cascade);
  services::offerCascade(page, control.rest, frame::kDesignersRights);
  return body.fill({{"opening", layout.opening},
                    {"size", layout.size},
                    {"levels", control.rest},
                    {"options", services::storedOptions(page, control.statement)}});
}

std::string listBody(Page& page) {
  static const PageText body(embedded::control_pages::find("show_list.html"));
  const ControlDefinition control = storedDefinition(page, ControlKind::List);
  ErrorState err;
  const std::string grid = err.value(
      [&] { return listGrid(page, withoutRows(control.statement), control.rest, "100%"); });
  return body.fill({{"grid", grid}});
}

// Nothing for a control of another kind, which a body of "" is not.
Variant userBody(Page& page) {
  const std::string kind = kindOf(page);
  if (kind == "1") return dropDownBody(page, kUserLayout);
  if (kind == "2") return cascadeBody(page, kUserLayout);
  if (kind == "3") return listBody(page);
  return {};
}

Variant templateBody(Page& page) {
  const std::string kind = kindOf(page);
  std::string body = "<br><br>";
  if (kind == "1") body += dropDownBody(page, kTemplateLayout);
  if (kind == "2") body += cascadeBody(page, kTemplateCascadeLayout);
  return body;
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
  return listBody(page);
}

void showSearchDlg_sysField(Page& page) {
  writeShowDialog(page, "模板控件预览", templateBody);
}

Variant showSearchDlg_sysField1(Page& page) {
  return dropDownBody(page, kTemplateLayout);
}

Variant showSearchDlg_sysField2(Page& page) {
  return cascadeBody(page, kTemplateCascadeLayout);
}

}  // namespace tarlo::control
