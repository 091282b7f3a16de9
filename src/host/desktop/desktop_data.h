#pragma once
// What the desktop's pages have in common: the signed-in user, the menu as far as the user may see
// it and its markup, the colour scheme. Every number that goes into a statement was read as a
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

// "12" is 12; anything but up to nine digits is nothing.
std::optional<int> positiveNumber(std::string_view text);

// The menu as markup: items of an ARIA tree, without the element around them (the first item takes
// the focus), and one card for each entry.
std::string menuTreeHtml(const std::vector<MenuEntry>& entries);
std::string menuCardsHtml(const std::vector<MenuEntry>& entries);
// Entries of all levels that open a page, in menu order.
std::vector<MenuEntry> openEntries(const std::vector<MenuEntry>& entries);

// The user's colour scheme. The browser keeps the choice in a cookie, the pages read it from
// Session("usrStyle") as "1" to "4"; the desktop's own addresses carry it from the one to the
// other.
inline constexpr std::string_view kStyleCookie = "tarloStyle";

// Takes a valid choice of the cookie over into the session. Gives the scheme's word: sea, olive,
// orange or sun; sea when nothing was chosen.
std::string_view takeStyle(Page& page);

}  // namespace tarlo::host
