#pragma once
// The search for the ways in which selected relations lead from a main table to other tables, over
// the relations' rows. Not for use outside this folder.

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "frame/page.h"

namespace tarlo::metadata {

using Id = std::optional<std::int64_t>;  // nothing for a column without a value

// A number as ids are written, blanks round it allowed; nothing for any other text.
Id idOf(std::string_view text);
// The relations of a list as it stands between the brackets of IN. Ids joined by commas are taken
// as they are; what else there is the database is asked for. None where it refuses that, as it does
// an empty list.
std::vector<std::int64_t> relationIds(Page& page, std::string_view list);
// The table that a text means behind an equals sign, where a relation touches it.
Id tableId(Page& page, std::string_view text);

struct Relation {
  std::int64_t id = 0;
  Id mainTable, mainField, relationTable, relationField;
};

// The members of Path in their order, without repetition, in the order of their numbers. None when
// a two-hop way has a member without a value. `relations` in the order of their ids.
using PathIds = std::array<Id, 6>;
std::vector<PathIds> pathsOver(const std::vector<Relation>& relations, std::int64_t mainTable);
// Over the relations that the dictionary has. Never raises.
std::vector<PathIds> pathIds(Page& page, std::string_view mainTable, std::string_view relations);

}  // namespace tarlo::metadata
