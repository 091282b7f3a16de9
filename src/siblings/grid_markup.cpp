#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "frame/place.h"
#include "siblings/grid_rows.h"

namespace tarlo::siblings {
namespace {

using frame::inPlace;
using frame::Place;
using Json = nlohmann::ordered_json;

// Characters beyond ASCII as escapes: the text reads alike in every code page that it is sent in.
std::string textOf(const Json& json) {
  constexpr int kOneLine = -1;
  return json.dump(kOneLine, ' ', true, Json::error_handler_t::replace);
}

// The settings that the browser's side of the grid is made with, as the members of one JSON object.
class Settings {
 public:
  void add(std::string_view name, std::string_view text) {
    begin(name);
    text_ += inPlace(Place::Json, text);
  }
  void add(std::string_view name, const char* text) { add(name, std::string_view(text)); }
  void add(std::string_view name, std::int64_t number) {
    begin(name);
    text_ += std::to_string(number);
  }
  void add(std::string_view name, bool flag) {
    begin(name);
    text_ += flag ? "true" : "false";
  }
  // An array of objects: `addMembers` fills the settings of one item.
  template <class Items, class AddMembers>
  void add(std::string_view name, const Items& items, AddMembers addMembers) {
    begin(name);
    text_ += '[';
    for (const auto& item : items) {
      if (text_.back() == '}') text_ += ',';
      text_ += '{';
      addMembers(item);
      text_ += '}';
    }
    text_ += ']';
  }
  std::string object() && { return "{" + std::move(text_) + "}"; }

 private:
  void begin(std::string_view name) {
    if (!text_.empty() && text_.back() != '{') text_ += ',';
    text_.append(1, '"').append(name).append("\":");
  }
  std::string text_;
};

void addMenus(Settings& settings, const GridDefinition& grid) {
  static const std::vector<GridMenu> kNone;
  settings.add("menus", grid.showMenu ? grid.menus : kNone, [&](const GridMenu& menu) {
    settings.add("caption", menu.caption);
    settings.add("views", menu.views, [&](const GridView& view) {
      settings.add("caption", view.caption);
      settings.add("script", unescapedScript(view.script));
    });
  });
}

void addButtons(Settings& settings, const GridDefinition& grid) {
  static const std::vector<GridButton> kNone;
  settings.add("buttons", grid.showButton ? grid.buttons : kNone, [&](const GridButton& button) {
    settings.add("tip", button.tip);
    settings.add("caption", button.caption);
    settings.add("script", button.script);
    settings.add("cssClass", button.cssClass);
  });
}

std::string settingsOf(const GridDefinition& grid, const DrawnGrid& drawn) {
  Settings settings;
  settings.add("key", drawn.key);
  settings.add("error", drawn.error);
  settings.add("total", drawn.rows.total);
  settings.add("page", drawn.rows.page);
  settings.add("pageSize", std::int64_t{grid.pageSize});
  settings.add("multiPage", grid.multiPage);
  settings.add("selectionStyle", std::int64_t{grid.selectionStyle});
  settings.add("search", grid.search);
  settings.add("onRowDoubleClick", grid.onRowDoubleClick);
  settings.add("onRowSelect", grid.onRowSelect);
  addMenus(settings, grid);
  addButtons(settings, grid);
  return std::move(settings).object();
}

std::string headMarkup(const GridDefinition& grid) {
  std::string head;
  for (const std::string& caption : grid.captions) {
    head += "<th scope=\"col\">";
    head += inPlace(Place::Kept, caption);
    head += "</th>";
  }
  return head;
}

// The element names go on in the same way when the browser draws another page.
std::string bodyMarkup(const GridDefinition& grid, const GridRows& rows) {
  std::string body;
  int number = 0;
  for (const GridRow& row : rows.rows) {
    body.append("<tr id=\"").append(grid.id).append("_row").append(std::to_string(++number));
    body.append("\" dataID=\"");
    body += inPlace(Place::Encoded, row.id);
    body += "\">";
    for (const std::string& cell : row.cells) {
      body += "<td>";
      body += inPlace(Place::Kept, cell);
      body += "</td>";
    }
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
      grid.id, grid.width, headMarkup(grid), bodyMarkup(grid, drawn.rows), settingsOf(grid, drawn));
}

std::string rowsJson(const GridRows& rows) {
  Json list = Json::array();
  for (const GridRow& row : rows.rows) {
    Json cells = Json::array();
    for (const std::string& cell : row.cells) cells.push_back(inPlace(Place::Kept, cell));
    list.push_back({{"id", row.id}, {"cells", std::move(cells)}});
  }
  return textOf({{"ok", true}, {"total", rows.total}, {"page", rows.page}, {"rows", list}});
}

std::string errorJson(int status, std::string_view message) {
  return textOf({{"ok", false}, {"status", status}, {"error", message}});
}

}  // namespace tarlo::siblings
