// The page on which users' cascades were made.

#include "control/operations.h"
#include "embedded_control_pages.h"
#include "frame/dialog_frame.h"
#include "frame/page_text.h"
#include "metadata/dictionary.h"
#include "metadata/stored_schemes.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using frame::inPlace;
using frame::PageText;
using frame::Place;
using text::joined;

// The scheme's columns as options: [table].[column] with the display names of both.
std::string columnOptions(Page& page, const std::string& scheme) {
  const auto columns = metadata::columnNames(page, scheme);
  if (!columns) throw RuntimeError(ErrorNumber::TypeMismatch, "the scheme's columns");
  std::string options;
  for (const auto& [table, column] : *columns) {
    const std::string tableCaption = metadata::tableCaption(page, table).value_or("-1");
    const std::string caption =
        metadata::fieldCaption(page, joined({table, ".", column})).value_or("-1");
    options += joined({"<option value=\"[", inPlace(Place::Attribute, table), "].[",
                       inPlace(Place::Attribute, column), "]\">",
                       inPlace(Place::Text, joined({tableCaption, ".", caption})), "</option>"});
  }
  return options;
}

}  // namespace

Variant addSearchDlg_UsrField2_2(Page& page, const Variant& id) {
  static const PageText body(embedded::control_pages::find("cascade_page.html"));
  static const PageText level(embedded::control_pages::find("cascade_level.html"));
  static const PageText buttons(embedded::control_pages::find("cascade_buttons.html"));
  const std::string scheme = variant::spliced(id);
  const std::string options = columnOptions(page, scheme);
  const std::string row = level.fill({{"options", options}});
  frame::writeDialogHead(page, "新增控件关系", frame::DialogBody::WindowColour);
  body.write(page.response,
             {{"row", row}, {"scheme", scheme}, {"options", options}, {"levels", row}});
  frame::writeDialogBodyEnd(page);
  buttons.write(page.response);
  frame::writeDialogFoot(page);
  return {};
}

}  // namespace tarlo::control
