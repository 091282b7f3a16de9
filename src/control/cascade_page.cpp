#include "control/cascade_page.h"

#include <fmt/format.h>

#include "embedded_control_pages.h"
#include "frame/dialog_frame.h"
#include "frame/template.h"
#include "metadata/operations.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using frame::inPlace;
using frame::Place;
using frame::Template;
using variant::spliced;

// The scheme's columns as options: [table].[column] with the display names of both.
std::string columnOptions(Page& page, const Variant& scheme) {
  const Variant columns = metadata::getQueryAllField(page, scheme, false);
  if (!columns.isArray()) throw RuntimeError(ErrorNumber::TypeMismatch, "the scheme's columns");
  const Array& pairs = columns.array();
  std::string options;
  for (std::ptrdiff_t i = 1; i <= pairs.upperBound(2); ++i) {
    const std::string table = spliced(pairs.at(1, i));
    const std::string column = spliced(pairs.at(2, i));
    const Variant field(fmt::format("{}.{}", table, column));
    Variant tableName(table);
    const std::string caption = spliced(metadata::getTableDesc(page, tableName)) + "." +
                                spliced(metadata::getFieldDesc(page, field));
    options.append("<option value=\"[").append(inPlace(Place::Attribute, table)).append("].[");
    options.append(inPlace(Place::Attribute, column)).append("]\">");
    options.append(inPlace(Place::Text, caption)).append("</option>");
  }
  return options;
}

}  // namespace

Variant addSearchDlg_UsrField2_2(Page& page, const Variant& id) {
  static const Template body(embedded::control_pages::find("cascade_page.html"));
  static const Template level(embedded::control_pages::find("cascade_level.html"));
  static const Template buttons(embedded::control_pages::find("cascade_buttons.html"));
  const std::string scheme = spliced(id);
  const std::string options = columnOptions(page, id);
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
