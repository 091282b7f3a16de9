#include "workflow/panels.h"

#include <string>
#include <string_view>

#include "embedded_workflow_pages.h"
#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/template.h"
#include "org/current_user.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "workflow/panel_statements.h"

namespace tarlo::workflow {
namespace {

using frame::inPlace;
using frame::Place;
using frame::Template;
using variant::spliced;

struct Panel {
  std::string_view caption;
  std::string_view firstCell;  // attributes of a row's cells
  std::string_view secondCell;
  std::string_view allAddress;
};

constexpr Panel kTasks = {"待处理任务",
                          "width=\"120\" style=\"cursor : hand; border-bottom:1px solid #DEDBCE;\"",
                          "width=\"120\" height=\"22\" style=\"border-bottom:1px solid #DEDBCE;\"",
                          "/TarloMyScheme.Zembra?action=MyTaskList"};
constexpr Panel kSteps = {
    "待处理的业务流程", "width=\"160\" style=\"cursor : hand; border-bottom:1px solid #DEDBCE;\"",
    "width=\"80\" height=\"22\" style=\"cursor : hand; border-bottom:1px solid #DEDBCE;\"",
    "/orvane.Zembra?action=showAllWorkFlowInstance"};

// The statements put the link around a text themselves. The link holds numbers; the text behind it
// is data, and is written in its place here.
struct LinkedCell {
  std::string_view opened;  // ends the link's opening tag
  std::string_view closed;  // ends the cell; "" where the statement does not close the link
};
constexpr LinkedCell kTaskCell = {"',680,510);\">", "</span>"};
constexpr LinkedCell kStepCell = {"',770,570);\">", ""};

// The text of a task that is late stands in red.
std::string linkText(std::string_view text) {
  constexpr std::string_view kRed = "<font color=red>";
  constexpr std::string_view kRedEnd = "</font>";
  if (!text.starts_with(kRed) || !text.ends_with(kRedEnd)) return inPlace(Place::Text, text);
  text.remove_prefix(kRed.size());
  text.remove_suffix(kRedEnd.size());
  return std::string(kRed) + inPlace(Place::Text, text) + std::string(kRedEnd);
}

std::string cellMarkup(const LinkedCell& shape, std::string_view cell) {
  const std::size_t at = cell.find(shape.opened);
  if (at == std::string_view::npos) return inPlace(Place::Text, cell);
  std::string_view text = cell.substr(at + shape.opened.size());
  std::string markup = std::string(cell.substr(0, at)).append(shape.opened);
  if (shape.closed.empty()) return markup + inPlace(Place::Text, text);
  if (text.ends_with(shape.closed)) text.remove_suffix(shape.closed.size());
  return markup + linkText(text) + std::string(shape.closed);
}

bool isBlank(Page& page, const Variant& value) {
  return variant::toBoolean(frame::isNothing(page, value));
}

// `title` and `text` give the markup of a row's cells.
template <class Title, class Text>
void writePanel(Page& page, const Panel& panel, const Variant& rows, Title&& title, Text&& text) {
  static const Template top(embedded::workflow_pages::find("panel_top.html"));
  static const Template line(embedded::workflow_pages::find("panel_row.html"));
  static const Template more(embedded::workflow_pages::find("panel_more.html"));
  static const Template none(embedded::workflow_pages::find("panel_none.html"));
  static const Template end(embedded::workflow_pages::find("panel_end.html"));
  top.write(page.response, {{"caption", panel.caption}});
  if (rows.isArray()) {
    const Array& cells = rows.array();
    for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
      line.write(page.response, {{"firstCell", panel.firstCell},
                                 {"title", title(cells, row)},
                                 {"secondCell", panel.secondCell},
                                 {"text", text(cells, row)}});
    }
    more.write(page.response, {{"address", panel.allAddress}});
  } else {
    none.write(page.response);
  }
  end.write(page.response);
}

// Whose permission the step's link carries: 0 unless the instance has a menu of its own.
Variant permissionOf(Page& page, const Variant& menu) {
  const Variant own = doGetWFIName(page, menu, "IsExistsTempMenu", {}, {});
  const Variant permission = doFindPermissionWFI(page, menu, "", "");
  const bool hasOwnMenu = !isBlank(page, own) && !variant::equals(own, 0);
  return hasOwnMenu && !isBlank(page, permission) ? permission : Variant(0);
}

}  // namespace

void MergeGetMyTaskInFirst(Page& page) {
  const Variant rows = frame::execSQLRows(page, Variant(openTasksStatement(org::currentUserId())));
  const auto title = [](const Array& cells, std::ptrdiff_t row) {
    return cellMarkup(kTaskCell, spliced(cells.at(0, row)));
  };
  const auto period = [](const Array& cells, std::ptrdiff_t row) {
    return inPlace(Place::Text, spliced(cells.at(1, row)));
  };
  writePanel(page, kTasks, rows, title, period);
}

void WorkFlowWaitingForDealList(Page& page) {
  const Variant rows =
      frame::execSQLRows(page, Variant(waitingStepsStatement(org::currentUserId())));
  const auto title = [&](const Array& cells, std::ptrdiff_t row) {
    const std::string permission =
        inPlace(Place::Address, spliced(permissionOf(page, cells.at(2, row))));
    return text::replace(cellMarkup(kStepCell, spliced(cells.at(0, row))), "&intPermission=0&",
                         "&intPermission=" + permission + "&");
  };
  const auto state = [](const Array& cells, std::ptrdiff_t row) {
    return cellMarkup(kStepCell, spliced(cells.at(1, row)));
  };
  writePanel(page, kSteps, rows, title, state);
}

Variant doGetWFIName(Page& page, const Variant& iUID, const Variant&, const Variant&,
                     const Variant&) {
  return frame::firstCell(page,
                          ("DECLARE  @strReturn varchar(50);EXEC "
                           "Zembra_WorkFlowInstance_IsExistsTempMenu " +
                           spliced(iUID) + ",@strReturn out;SELECT @strReturn "),
                          Variant(""));
}

Variant doFindPermissionWFI(Page& page, const Variant& intMenuID, const Variant&, const Variant&) {
  return frame::firstCell(
      page,
      ("SELECT Exper_SID      FROM Zembra_ExchangePermission      WHERE   "
       "ExPer_RID = " +
       spliced(org::currentUserId()) + "             AND ExPer_Para = " + spliced(intMenuID)),
      Variant(0));
}

Variant getCurrentResultSet(Page& page) {
  const Variant rows = frame::execSQLRows(
      page, Variant("Select top 1 TarloTable_SQLString,TarloTable_SQLString2 From "
                    "Zembra_Temp_TarloTable Where TarloTable_SessionID = '" +
                    page.session.id() + "' order by TarloTable_ID desc "));
  if (!rows.isArray()) return {};
  const Array& cells = rows.array();
  return isBlank(page, cells.at(1, 0)) ? cells.at(0, 0) : cells.at(1, 0);
}

}  // namespace tarlo::workflow
