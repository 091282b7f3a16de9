#pragma once
// The menu as markup: the shell's tree, and cards for the start page and folders.

#include <string>
#include <vector>

#include "host/desktop/desktop_data.h"

namespace tarlo::host {

// Items of an ARIA tree, without the element around them. The first item takes the focus.
std::string menuTreeHtml(const std::vector<MenuEntry>& entries);
// One card for each entry.
std::string menuCardsHtml(const std::vector<MenuEntry>& entries);
// Entries of all levels that open a page, in menu order.
std::vector<MenuEntry> openEntries(const std::vector<MenuEntry>& entries);

}  // namespace tarlo::host
