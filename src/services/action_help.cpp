#include "services/action_help.h"

#include <string>

#include "frame/data.h"
#include "frame/place.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::services {
namespace {

using variant::spliced;

enum class Column { Title = 0, Text = 1 };

// The column of all rows in one text; nothing when there are no rows.
Variant joinedColumn(Page& page, const Variant& action, Column column) {
  const Variant rows = frame::execSQLRows(
      page,
      "select SubHelp_title,SubHelp_popup from  Zembra_SubHelp , Zembra_Functions Where "
      "SubHelp_FuncID = Func_ID and Func_MenuID = " +
          spliced(page.session.get("usrICID")) + " and Func_Action = '" + spliced(action) +
          "' order by SubHelp_ID ");
  if (!rows.isArray()) return {};
  const Array& cells = rows.array();
  std::string joined;
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    joined += spliced(cells.at(static_cast<std::ptrdiff_t>(column), row));
  }
  return joined;
}

}  // namespace

Variant getActionHelp(Page& page, const Variant& sAction) {
  const Variant joined = joinedColumn(page, sAction, Column::Text);
  if (joined.isEmpty()) return "暂时没有相关的帮助";
  std::string items;
  for (const std::string_view line : text::split(joined.text(), "\r\n")) {
    if (!line.empty()) {
      items.append("<li>").append(frame::inPlace(frame::Place::Text, line)).append("</li>");
    }
  }
  return items;
}

Variant getActionHelpTitle(Page& page, const Variant& sAction) {
  const Variant joined = joinedColumn(page, sAction, Column::Title);
  return joined.isEmpty() ? Variant("暂时没有相关的主题") : joined;
}

}  // namespace tarlo::services
