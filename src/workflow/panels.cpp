#include <string>
#include <string_view>

#include "embedded_workflow_pages.h"
#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/page_text.h"
#include "org/groups.h"
#include "text/pieces.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "workflow/operations.h"

namespace tarlo::workflow {
namespace {

using frame::inPlace;
using frame::PageText;
using frame::Place;
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

// `title` and `text` give the markup of a row's cells.
template <class Title, class Text>
void writePanel(Page& page, const Panel& panel, const frame::Rows& rows, Title&& title,
                Text&& text) {
  static const PageText top(embedded::workflow_pages::find("panel_top.html"));
  static const PageText line(embedded::workflow_pages::find("panel_row.html"));
  static const PageText more(embedded::workflow_pages::find("panel_more.html"));
  static const PageText none(embedded::workflow_pages::find("panel_none.html"));
  static const PageText end(embedded::workflow_pages::find("panel_end.html"));
  top.write(page.response, {{"caption", panel.caption}});
  for (const frame::Row row : rows) {
    line.write(page.response, {{"firstCell", panel.firstCell},
                               {"title", title(row)},
                               {"secondCell", panel.secondCell},
                               {"text", text(row)}});
  }
  if (rows.empty()) {
    none.write(page.response);
  } else {
    more.write(page.response, {{"address", panel.allAddress}});
  }
  end.write(page.response);
}

Variant instanceMenu(Page& page, std::string_view instance) {
  return frame::firstCell(page,
                          text::joined({"DECLARE  @strReturn varchar(50);EXEC "
                                        "Zembra_WorkFlowInstance_IsExistsTempMenu ",
                                        instance, ",@strReturn out;SELECT @strReturn "}),
                          Variant(""));
}

Variant handedOverBy(Page& page, std::string_view module) {
  return frame::firstCell(
      page,
      text::joined({"SELECT Exper_SID      FROM Zembra_ExchangePermission      WHERE   "
                    "ExPer_RID = ",
                    org::currentUserId(), "             AND ExPer_Para = ", module}),
      Variant(0));
}

// Whose permission the step's link carries: 0 unless the instance has a menu of its own.
std::string permissionOf(Page& page, std::string_view menu) {
  const Variant own = instanceMenu(page, menu);
  const Variant permission = handedOverBy(page, menu);
  const bool hasOwnMenu = !frame::isBlank(own) && !variant::equals(own, 0);
  return hasOwnMenu && !frame::isBlank(permission) ? spliced(permission) : "0";
}

}  // namespace

void MergeGetMyTaskInFirst(Page& page) {
  const frame::Rows rows = frame::rows(page, openTasksStatement(org::currentUserId()));
  const auto title = [](frame::Row row) { return cellMarkup(kTaskCell, row.text(0)); };
  const auto period = [](frame::Row row) { return inPlace(Place::Text, row.text(1)); };
  writePanel(page, kTasks, rows, title, period);
}

void WorkFlowWaitingForDealList(Page& page) {
  const frame::Rows rows = frame::rows(page, waitingStepsStatement(org::currentUserId()));
  const auto title = [&](frame::Row row) {
    const std::string permission = inPlace(Place::Address, permissionOf(page, row.text(2)));
    return text::replace(cellMarkup(kStepCell, row.text(0)), "&intPermission=0&",
                         "&intPermission=" + permission + "&");
  };
  const auto state = [](frame::Row row) { return cellMarkup(kStepCell, row.text(1)); };
  writePanel(page, kSteps, rows, title, state);
}

Variant doGetWFIName(Page& page, const Variant& iUID, const Variant&, const Variant&,
                     const Variant&) {
  return instanceMenu(page, spliced(iUID));
}

Variant doFindPermissionWFI(Page& page, const Variant& intMenuID, const Variant&, const Variant&) {
  return handedOverBy(page, spliced(intMenuID));
}

Variant getCurrentResultSet(Page& page) {
  const frame::Rows rows =
      frame::rows(page,
                  "Select top 1 TarloTable_SQLString,TarloTable_SQLString2 From "
                  "Zembra_Temp_TarloTable Where TarloTable_SessionID = '" +
                      page.session.id() + "' order by TarloTable_ID desc ");
  if (rows.empty()) return {};
  const frame::Row newest = rows.front();
  return newest.value(frame::isBlank(newest.value(1)) ? 0 : 1);
}

}  // namespace tarlo::workflow
