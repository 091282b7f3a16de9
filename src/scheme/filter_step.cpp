#include "compile/grammar.h"
#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/page_text.h"
#include "scheme/operations.h"
#include "scheme/step_fields.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::PageText;
using variant::spliced;

// A row with the parts of a stored condition; one that it lacks is left empty.
std::string rowMarkup(const std::string& fields, const compile::Pieces& condition) {
  static const PageText row(embedded::scheme_pages::find("filter_step_row.html"));
  const auto part = [&](std::size_t i) {
    return std::string(i < condition.size() ? condition[i] : "");
  };
  const auto preset = [&](std::size_t i) {
    return part(i).empty()
               ? std::string()
               : " selectvalue=\"" + frame::inPlace(frame::Place::Attribute, part(i)) + "\"";
  };
  return row.fill({{"fields", fields},
                   {"field", preset(0)},
                   {"comparison", preset(1)},
                   {"value", part(2)},
                   {"logic", preset(3)}});
}

struct ConditionRows {
  std::string markup;
  std::string counting;  // script that sets the number of rows
};

ConditionRows restoredRows(Page& page, const std::string& fields) {
  ErrorState err;
  const frame::Rows found = err.value([&] {
    return frame::rows(
        page, "select Query_rel from Zembra_Query_Main where Zembra_Flag <> 0 and Query_ID=" +
                  spliced(page.request.value("prikeyid")));
  });
  if (found.empty()) return {};
  const std::string stored = found.front().text(0);
  const std::string_view filter = text::trim(stored);
  if (filter.empty()) return {rowMarkup(fields, {}), "selectIndex=1;\r\n"};
  ConditionRows rows;
  for (const compile::Condition& condition : compile::conditionsOf(filter)) {
    rows.markup += rowMarkup(fields, condition.parts());
    rows.counting += "selectIndex++;\r\n";
  }
  return rows;
}

}  // namespace

void addSearchDlg3(Page& page) {
  static const PageText rest(embedded::scheme_pages::find("filter_step.html"));
  const std::string posted = unescaped(spliced(page.request.value("virtual")));
  const std::string fields =
      filterFields(page, spliced(page.request.value("sTable")),
                   spliced(page.request.value("Multi")), computedNames(posted));
  const ConditionRows rows = isChange(page)
                                 ? restoredRows(page, fields)
                                 : ConditionRows{rowMarkup(fields, {}), "selectIndex = 1;\r\n"};
  frame::writeStepHead(page);
  rest.write(page.response, {{"rows", rows.markup},
                             {"counting", rows.counting},
                             {"row", rowMarkup(fields, {})},
                             {"step", spliced(page.request.value("gostep"))},
                             {"table", spliced(page.request.value("sTable"))}});
}

}  // namespace tarlo::scheme
