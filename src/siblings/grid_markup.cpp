#include "siblings/grid_markup.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "siblings/grid_conditions.h"
#include "siblings/markup.h"

namespace tarlo::siblings {
namespace {

using Json = nlohmann::ordered_json;

// Characters beyond ASCII as escapes: the text reads alike in every code page that it is sent in.
std::string textOf(const Json& json) {
  constexpr int kOneLine = -1;
  return json.dump(kOneLine, ' ', true, Json::error_handler_t::replace);
}

Json menusOf(const GridDefinition& grid) {
  Json menus = Json::array();
  for (const GridMenu& menu : grid.menus) {
    Json views = Json::array();
    for (const GridView& view : menu.views) {
      views.push_back({{"caption", view.caption}, {"script", unescapedScript(view.script)}});
    }
    menus.push_back({{"caption", menu.caption}, {"views", std::move(views)}});
  }
  return menus;
}

Json buttonsOf(const GridDefinition& grid) {
  Json buttons = Json::array();
  for (const GridButton& button : grid.buttons) {
    buttons.push_back({{"tip", button.tip},
                       {"caption", button.caption},
                       {"script", button.script},
                       {"cssClass", button.cssClass}});
  }
  return buttons;
}

Json settingsOf(const GridDefinition& grid, const DrawnGrid& drawn) {
  return {{"key", drawn.key},
          {"error", drawn.error},
          {"total", drawn.rows.total},
          {"page", drawn.rows.page},
          {"pageSize", grid.pageSize},
          {"multiPage", grid.multiPage},
          {"selectionStyle", grid.selectionStyle},
          {"search", grid.search},
          {"onRowDoubleClick", grid.onRowDoubleClick},
          {"onRowSelect", grid.onRowSelect},
          {"menus", grid.showMenu ? menusOf(grid) : Json::array()},
          {"buttons", grid.showButton ? buttonsOf(grid) : Json::array()}};
}

std::string headMarkup(const GridDefinition& grid) {
  std::string head;
  for (const std::string& caption : grid.captions) {
    head += fmt::format("<th scope=\"col\">{}</th>", cellMarkup(caption));
  }
  return head;
}

// The element names go on in the same way when the browser draws another page.
std::string bodyMarkup(const GridDefinition& grid, const GridRows& rows) {
  std::string body;
  int number = 0;
  for (const GridRow& row : rows.rows) {
    body += fmt::format("<tr id=\"{}_row{}\" dataID=\"{}\">", grid.id, ++number,
                        attributeMarkup(row.id));
    for (const std::string& cell : row.cells) body += "<td>" + cellMarkup(cell) + "</td>";
    body += "</tr>\r\n";
  }
  return body;
}

}  // namespace

std::string gridMarkup(const GridDefinition& grid, const DrawnGrid& drawn) {
  return fmt::format(
      "<div class=\"tarlo-grid\" id=\"{0}_grid\" style=\"width:{1}\">"
      "<table class=\"tarlo-grid-table\" cellspacing=\"0\"><thead><tr>{2}</tr></thead>\r\n"
      "<tbody>{3}</tbody></table></div>\r\n"
      "<script>var {0} = window.TarloGrid && TarloGrid.attach(\"{0}\",{4});</script>\r\n",
      grid.id, grid.width, headMarkup(grid), bodyMarkup(grid, drawn.rows),
      scriptSafe(textOf(settingsOf(grid, drawn))));
}

std::string rowsJson(const GridRows& rows) {
  Json list = Json::array();
  for (const GridRow& row : rows.rows) {
    Json cells = Json::array();
    for (const std::string& cell : row.cells) cells.push_back(cellMarkup(cell));
    list.push_back({{"id", row.id}, {"cells", std::move(cells)}});
  }
  return textOf({{"ok", true}, {"total", rows.total}, {"page", rows.page}, {"rows", list}});
}

std::string errorJson(int status, std::string_view message) {
  return textOf({{"ok", false}, {"status", status}, {"error", message}});
}

}  // namespace tarlo::siblings
