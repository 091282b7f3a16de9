#include "org/groups.h"

#include "frame/data.h"
#include "org/operations.h"
#include "text/pieces.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::org {
namespace {

using variant::spliced;

constexpr std::string_view kRank =
    "select Rank_index From Zembra_User , Zembra_Rank Where User_RankID = Rank_ID and user_ID = ";
constexpr std::string_view kGroup = " Select User_GroupID From Zembra_User where User_ID = ";
constexpr std::string_view kJoinedGroups =
    " Select User_joinGroupID From Zembra_User where User_ID = ";

Variant cellOfCurrentUser(Page& page, std::string_view statement) {
  return frame::rows(page, text::joined({statement, currentUserId()})).front().value(0);
}

std::string currentJoinedGroups(Page& page) {
  return joinedGroups(spliced(cellOfCurrentUser(page, kJoinedGroups)));
}

std::optional<std::string> currentLimit(Page& page) {
  const Variant rank = currentRank(page);
  const std::string group = spliced(cellOfCurrentUser(page, kGroup));
  return groupLimit(rank, group, currentJoinedGroups(page));
}

}  // namespace

Variant currentRank(Page& page) {
  return cellOfCurrentUser(page, kRank);
}

std::string currentGroupLimit(Page& page) {
  return currentLimit(page).value_or("");
}

std::string joinedGroups(std::string_view stored) {
  std::string groups(text::trim(stored));
  if (groups == ",") groups = "0";
  if (groups.ends_with(',')) groups += '0';
  return groups;
}

std::optional<std::string> groupLimit(const Variant& rank, std::string_view group,
                                      std::string_view joined) {
  if (variant::equals(rank, 1)) return " And 1<>1 ";
  if (variant::equals(rank, 2)) return text::joined({" And Group_ID = ", group, " "});
  if (variant::equals(rank, 3)) {
    return text::joined({" And Group_ID in ( ", group, ",", joined, ") "});
  }
  if (variant::equals(rank, 4)) return "";
  return {};
}

Variant RankLimit(Page& page) {
  return currentRank(page);
}

Variant getGroupID(Page& page) {
  return cellOfCurrentUser(page, kGroup);
}

Variant getGroupName(Page& page) {
  cellOfCurrentUser(page, kGroup);
  cellOfCurrentUser(page, kGroup);
  return {};
}

Variant getJoinGroupID(Page& page) {
  return Variant(currentJoinedGroups(page));
}

Variant getGroupLimitSQL(Page& page) {
  const std::optional<std::string> limit = currentLimit(page);
  return limit ? Variant(*limit) : Variant();
}

}  // namespace tarlo::org
