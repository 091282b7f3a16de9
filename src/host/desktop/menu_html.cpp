// The menu as markup.

#include <fmt/format.h>

#include "frame/place.h"
#include "host/desktop/desktop_data.h"

namespace tarlo::host {
namespace {

using frame::inPlace;
using frame::Place;

// The item is the focusable element; its link is for the mouse and takes no tab stop of its own.
std::string itemHtml(const MenuEntry& entry, int level, bool isFirst) {
  const std::string name = inPlace(Place::Encoded, entry.name);
  const std::string common =
      fmt::format(R"(<li role="treeitem" aria-level="{}" tabindex="{}" data-menu="{}" title="{}")",
                  level, isFirst ? 0 : -1, entry.id, inPlace(Place::Encoded, entry.description));
  if (entry.isFolder()) {
    std::string html = fmt::format(
        "{} aria-expanded=\"{}\"><span class=\"dt-item dt-folder\">{}</span><ul role=\"group\">\n",
        common, level == 1 ? "true" : "false", name);
    for (const MenuEntry& child : entry.children) html += itemHtml(child, level + 1, false);
    return html + "</ul></li>\n";
  }
  return fmt::format(
      "{}><a class=\"dt-item\" tabindex=\"-1\" target=\"Zembra\" href=\"/?cmdID={}\">{}</a></li>\n",
      common, entry.id, name);
}

void collect(const std::vector<MenuEntry>& entries, std::vector<MenuEntry>& found) {
  for (const MenuEntry& entry : entries) {
    if (!entry.isFolder()) found.push_back(entry);
    collect(entry.children, found);
  }
}

}  // namespace

std::string menuTreeHtml(const std::vector<MenuEntry>& entries) {
  std::string html;
  for (const MenuEntry& entry : entries) html += itemHtml(entry, 1, html.empty());
  return html;
}

std::string menuCardsHtml(const std::vector<MenuEntry>& entries) {
  std::string html;
  for (const MenuEntry& entry : entries) {
    html += fmt::format("<a class=\"dt-card{}\" href=\"/?cmdID={}\"><b>{}</b><span>{}</span></a>\n",
                        entry.isFolder() ? " dt-card-folder" : "", entry.id,
                        inPlace(Place::Encoded, entry.name),
                        inPlace(Place::Encoded, entry.description));
  }
  return html;
}

std::vector<MenuEntry> openEntries(const std::vector<MenuEntry>& entries) {
  std::vector<MenuEntry> found;
  collect(entries, found);
  return found;
}

}  // namespace tarlo::host
