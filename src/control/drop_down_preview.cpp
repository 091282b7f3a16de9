#include "control/drop_down_preview.h"

#include "control/control_store.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/statement_scope.h"
#include "frame/template.h"
#include "services/data_sources.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using variant::spliced;

// Rows of value and text.
services::OptionList optionsOf(const Variant& rows) {
  services::OptionList options;
  if (!rows.isArray()) return options;
  const Array& cells = rows.array();
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    options.add(spliced(cells.at(1, row)), spliced(cells.at(0, row)));
  }
  return options;
}

}  // namespace

bool writeDropDownPreview(Page& page, const std::string& sql, const DropDownLook& look) {
  static const frame::Template preview(embedded::control_pages::find("drop_down_preview.html"));
  ErrorState err;
  std::string tested = sql;
  if (!runsAsTest(page, err, tested)) return false;
  const auto options = optionsOf(err.value([&] {
    return frame::asDesigner(page, [&] { return frame::execSQLRows(page, Variant(sql)); });
  }));
  preview.write(page.response, {{"size", look.size},
                                {"data", look.keepsLastMark ? options.text() : options.joined()},
                                {"script", look.script}});
  return true;
}

void writePreviewEnd(Page& page) {
  frame::writeDialogBodyEnd(page);
  page.response.write(
      "<div align=\"right\"><input type=\"button\" class=\"btnX\" value=\"关闭\" "
      "onclick=\"window.close()\"></div>\r\n");
  frame::writeDialogFoot(page);
}

}  // namespace tarlo::control
