#pragma once
// The rules by which groups are shown, for a rank and groups that the caller knows. The operations
// ask them for the current user.

#include <optional>
#include <string>
#include <string_view>

#include "frame/page.h"

namespace tarlo::org {

// Always "": the platform declares a variable for it and nothing sets it. Deliberate: what reads it
// either finds no row or gives a statement that the database refuses, and callers rely on both. The
// signed-in user is Session("usrID").
inline std::string currentUserId() {
  return {};
}

// What the tables say of the current user; they raise DatabaseError.
Variant currentRank(Page& page);            // the rank's index
std::string currentGroupLimit(Page& page);  // as groupLimit gives it, "" for nothing

// A list of group ids that can stand in an IN list: trimmed, "," alone is "0", and a comma at the
// end gets a "0" behind it.
std::string joinedGroups(std::string_view stored);
// The condition on Group_ID by the rank's index: 1 no group, 2 the own one, 3 the own and the
// joined ones, 4 "" for all; nothing for any other, which adds nothing either.
std::optional<std::string> groupLimit(const Variant& rank, std::string_view group,
                                      std::string_view joined);

// Both are XML options for a condition on Group_ID, and raise DatabaseError.

// "所有部门" stands first unless gID is "noall".
std::string groupList(Page& page, std::string_view limit, const Variant& gID);
// The groups in (`bolLeft` True) or outside of the list `gID`, each id of it followed by a comma.
// The test is by position, so 3 counts as in "13,". Without rows the root is not closed:
// deliberate, only this list's callers meet it.
std::string joinGroupList(Page& page, std::string_view limit, const Variant& gID,
                          const Variant& bolLeft);

}  // namespace tarlo::org
