#include "control/list_grid.h"

#include "frame/sibling_calls.h"
#include "frame/statement_scope.h"

namespace tarlo::control {

std::shared_ptr<Object> choiceGrid(Page& page, std::string_view title, const std::string& sql,
                                   int pageSize) {
  auto grid = page.server.createObject("TarloTable.table");
  frame::connectToPage(page, *grid, frame::kGridContext);
  grid->put("id", "SearchTable");
  grid->put("SelectionStyle", 2);
  grid->put("title", title);
  grid->put("sql", sql);
  grid->put("Pagesize", pageSize);
  grid->put("showMenu", false);
  return grid;
}

Variant listGrid(Page& page, const std::string& sql, const std::string& titles,
                 std::string_view width) {
  const auto grid = choiceGrid(page, titles, sql, 10);
  grid->put("MultiPage", "true");
  grid->put("Width", width);
  grid->put("Search", "false");
  return frame::asDesigner(page, [&] { return frame::callMethod(*grid, "getTableHtml"); });
}

}  // namespace tarlo::control
