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

// A number as ids are written, blanks round it allowed; nothing for any other text.
std::optional<std::int64_t> idOf(std::string_view text);
// The ids of a comma-joined list. None when a piece is no number, or the list is empty: no
// statement over such a list has ever run.
std::vector<std::int64_t> idsOf(std::string_view list);

using Id = std::optional<std::int64_t>;  // nothing for a column without a value

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
