#pragma once
// What the desktop's pages read from the platform's tables: the signed-in user, the menu as far as
// the user may see it, and rows as text. Every number that goes into a statement was read as a
// number before.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"

namespace tarlo::host {

struct DesktopUser {
  int id = 0;  // 0 when nobody is signed in
  std::string name, department;
};
// By Session("usrID"). A user number without a row has no name.
DesktopUser currentUser(Page& page);

struct MenuEntry {
  int id = 0;
  int parent = 0;
  std::string name, href, description;  // "" in href: a folder
  std::vector<MenuEntry> children;

  bool isFolder() const { return href.empty(); }
};

// The entries that the user has a permission row for which does not forbid them, as a tree in menu
// order. An entry whose parent is not among them stands at the top, so that a single granted entry
// can be reached; entries that are each other's parents are left out.
std::vector<MenuEntry> menuTree(Page& page, int user);
// The entry with its direct children, or nothing when it may not be opened by the user.
std::optional<MenuEntry> menuEntry(Page& page, int user, int id);

// Cells as text, one vector a row; Null is "".
using TextRow = std::vector<std::string>;
std::vector<TextRow> textRows(Page& page, const std::string& sql);

// "12" is 12; anything but up to nine digits is nothing.
std::optional<int> positiveNumber(std::string_view text);

}  // namespace tarlo::host
