#include "workflow/panels.h"

#include <string>
#include <string_view>

#include "embedded_workflow_pages.h"
#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/template.h"
#include "org/current_user.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/text.h"
#include "workflow/panel_statements.h"

namespace tarlo::workflow {
namespace {

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

bool isBlank(Page& page, const Variant& value) {
  return variant::toBoolean(frame::isNothing(page, value));
}

// `title(cells, row)` gives the first cell's markup.
template <class Title>
void writePanel(Page& page, const Panel& panel, const Variant& rows, Title&& title) {
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
                                 {"text", spliced(cells.at(1, row))}});
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
  writePanel(page, kTasks, rows,
             [](const Array& cells, std::ptrdiff_t row) { return spliced(cells.at(0, row)); });
}

void WorkFlowWaitingForDealList(Page& page) {
  const Variant rows =
      frame::execSQLRows(page, Variant(waitingStepsStatement(org::currentUserId())));
  writePanel(page, kSteps, rows, [&](const Array& cells, std::ptrdiff_t row) {
    return variant::replace(
        spliced(cells.at(0, row)), "&intPermission=0&",
        "&intPermission=" + spliced(permissionOf(page, cells.at(2, row))) + "&");
  });
}

Variant doGetWFIName(Page& page, const Variant& iUID, const Variant&, const Variant&,
                     const Variant&) {
  return frame::firstCell(page,
                          Variant("DECLARE  @strReturn varchar(50);EXEC "
                                  "Zembra_WorkFlowInstance_IsExistsTempMenu " +
                                  spliced(iUID) + ",@strReturn out;SELECT @strReturn "),
                          Variant(""));
}

Variant doFindPermissionWFI(Page& page, const Variant& intMenuID, const Variant&, const Variant&) {
  return frame::firstCell(
      page,
      Variant("SELECT Exper_SID      FROM Zembra_ExchangePermission      WHERE   "
              "ExPer_RID = " +
              spliced(org::currentUserId()) +
              "             AND ExPer_Para = " + spliced(intMenuID)),
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
