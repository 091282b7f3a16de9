#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/dialog_frame.h"
#include "frame/template.h"
#include "scheme/operations.h"
#include "scheme/step_fields.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::Template;
using variant::spliced;

// The parts of a stored condition; those of an empty row are "".
struct Condition {
  std::string field;
  std::string comparison;
  std::string value;
  std::string logic;
};

std::string rowMarkup(const std::string& fields, const Condition& condition) {
  static const Template row(embedded::scheme_pages::find("filter_step_row.html"));
  const auto preset = [](const std::string& value) {
    return value.empty()
               ? std::string()
               : " selectvalue=\"" + frame::inPlace(frame::Place::Attribute, value) + "\"";
  };
  return row.fill({{"fields", fields},
                   {"field", preset(condition.field)},
                   {"comparison", preset(condition.comparison)},
                   {"value", condition.value},
                   {"logic", preset(condition.logic)}});
}

Condition conditionOf(std::string_view text) {
  const auto parts = text::split(text, ",");
  const auto part = [&](std::size_t i) {
    return i < parts.size() ? std::string(parts[i]) : std::string();
  };
  return {part(0), part(1), part(2), part(3)};
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
  for (const std::string_view text : text::split(filter, text::kPartMark)) {
    rows.markup += rowMarkup(fields, conditionOf(text));
    rows.counting += "selectIndex++;\r\n";
  }
  return rows;
}

}  // namespace

void addSearchDlg3(Page& page) {
  static const Template rest(embedded::scheme_pages::find("filter_step.html"));
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
