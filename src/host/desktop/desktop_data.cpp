#include "host/desktop/desktop_data.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <set>

#include "frame/data.h"
#include "variant/convert.h"

namespace tarlo::host {
namespace {

constexpr std::array<std::string_view, 4> kWords = {"sea", "olive", "orange", "sun"};

bool isStyle(std::string_view text) {
  return text.size() == 1 && text[0] >= '1' && text[0] <= '4';
}

constexpr std::string_view kEntryColumns =
    "Select Menu_ID, Menu_ParentID, Menu_Name, Menu_Href, Menu_Desc"
    " From Zembra_Menu,Zembra_permission Where permission_UserID = ";
constexpr std::string_view kEntryGranted =
    " AND Menu_ID = permission_MenuID AND permission_forbid <> 1 And Menu_Name <> ''";
constexpr std::string_view kEntryOrder = " Order By Menu_Order, Menu_ID";

// A user with several permission rows for one entry sees it once.
std::vector<MenuEntry> grantedEntries(Page& page, int user, const std::string& condition) {
  std::vector<MenuEntry> entries;
  std::set<int> seen;
  const std::string sql = std::string(kEntryColumns) + std::to_string(user) +
                          std::string(kEntryGranted) + condition + std::string(kEntryOrder);
  for (const frame::Row row : frame::rows(page, sql)) {
    MenuEntry entry;
    entry.id = positiveNumber(row.text(0)).value_or(0);
    entry.parent = positiveNumber(row.text(1)).value_or(0);
    entry.name = row.text(2);
    entry.href = row.text(3);
    entry.description = row.text(4);
    if (seen.insert(entry.id).second) entries.push_back(std::move(entry));
  }
  return entries;
}

// Every entry has one parent, so what hangs below a top entry holds no circle.
void addChildren(MenuEntry& entry, const std::vector<MenuEntry>& all) {
  for (const MenuEntry& candidate : all) {
    if (candidate.parent != entry.id) continue;
    entry.children.push_back(candidate);
    addChildren(entry.children.back(), all);
  }
}

}  // namespace

DesktopUser currentUser(Page& page) {
  DesktopUser user;
  user.id = positiveNumber(variant::spliced(page.session.get("usrID"))).value_or(0);
  const std::string id = std::to_string(user.id);
  const frame::Rows names =
      frame::rows(page, "select User_Name From Zembra_User Where User_ID = " + id);
  if (names.empty()) return user;
  user.name = names.front().text(0);
  user.department = frame::firstText(page,
                                     "select Group_name from Zembra_Group,Zembra_User"
                                     " Where User_GroupID = Group_ID and User_ID = " +
                                         id);
  return user;
}

std::vector<MenuEntry> menuTree(Page& page, int user) {
  const std::vector<MenuEntry> all = grantedEntries(page, user, "");
  const auto isListed = [&](int id) {
    return std::any_of(all.begin(), all.end(), [&](const MenuEntry& e) { return e.id == id; });
  };
  std::vector<MenuEntry> tops;
  for (const MenuEntry& entry : all) {
    if (isListed(entry.parent)) continue;
    tops.push_back(entry);
    addChildren(tops.back(), all);
  }
  return tops;
}

std::optional<MenuEntry> menuEntry(Page& page, int user, int id) {
  const std::string number = std::to_string(id);
  std::vector<MenuEntry> found = grantedEntries(page, user, " AND Menu_ID = " + number);
  if (found.empty()) return std::nullopt;
  found[0].children = grantedEntries(page, user, " AND Menu_ParentID = " + number);
  return std::move(found[0]);
}

std::optional<int> positiveNumber(std::string_view text) {
  int number = 0;
  if (text.empty() || text.size() > 9) return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 0) return std::nullopt;
  return number;
}

std::string_view takeStyle(Page& page) {
  std::string style = variant::spliced(page.request.value(kStyleCookie));
  if (isStyle(style)) {
    page.session.put("usrStyle", style);
  } else {
    style = variant::spliced(page.session.get("usrStyle"));
  }
  return isStyle(style) ? kWords[static_cast<std::size_t>(style[0] - '1')] : kWords[0];
}

}  // namespace tarlo::host
