#pragma once
// Finding, for a filter condition on a table that is joined under an alias, which alias to use.

#include <string>
#include <string_view>

namespace tarlo::compile {

// `filter` is compiled filter text; a marked item in it is "|||[via column];[column] <comparison>".
// The first join condition in `where` whose left side has the via column gives the table or alias,
// its right side's. Text without "|||" comes back unchanged. When no condition matches, everything
// merged so far is lost and the via column stands directly against the column; the statement is
// then refused by the database, and callers rely on that. Raises 9 when a marked item meets a
// condition that is not of the form table.column=other.
std::string mergedFilter(std::string_view filter, std::string_view where);

}  // namespace tarlo::compile
