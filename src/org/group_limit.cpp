#include "org/group_limit.h"

#include "frame/data.h"
#include "org/current_user.h"
#include "text/pieces.h"
#include "variant/array.h"
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
  const Variant rows =
      frame::execSQLRows(page, Variant(std::string(statement) + spliced(currentUserId())));
  return rows.array().at(0, 0);
}

}  // namespace

std::string joinedGroups(std::string_view stored) {
  std::string groups(text::trim(stored));
  if (groups == ",") groups = "0";
  if (groups.ends_with(',')) groups += '0';
  return groups;
}

Variant groupLimit(const Variant& rank, const Variant& group, const Variant& joined) {
  if (variant::equals(rank, 1)) return " And 1<>1 ";
  if (variant::equals(rank, 2)) return Variant(" And Group_ID = " + spliced(group) + " ");
  if (variant::equals(rank, 3)) {
    return Variant(" And Group_ID in ( " + spliced(group) + "," + spliced(joined) + ") ");
  }
  if (variant::equals(rank, 4)) return "";
  return {};
}

Variant RankLimit(Page& page) {
  return cellOfCurrentUser(page, kRank);
}

Variant getGroupID(Page& page) {
  return cellOfCurrentUser(page, kGroup);
}

Variant getGroupName(Page& page) {
  cellOfCurrentUser(page, kGroup);
  getGroupID(page);
  return {};
}

Variant getJoinGroupID(Page& page) {
  return Variant(joinedGroups(spliced(cellOfCurrentUser(page, kJoinedGroups))));
}

Variant getGroupLimitSQL(Page& page) {
  const Variant rank = RankLimit(page);
  const Variant group = getGroupID(page);
  const Variant joined = getJoinGroupID(page);
  return groupLimit(rank, group, joined);
}

}  // namespace tarlo::org
