#include "compile/filter_merge.h"

#include "compile/grammar.h"
#include "text/pieces.h"

namespace tarlo::compile {
namespace {

using text::split;
using text::trim;

// The far table or alias of the join that leaves by this column; "" when there is none. The
// deletion-flag conditions take part like the joins.
std::string_view aliasOf(std::string_view viaColumn, const Pieces& conditions) {
  for (std::string_view condition : conditions) {
    const Pieces sides = split(condition, "=");
    const Pieces left = split(piece(sides, 0), ".");
    const Pieces right = split(piece(sides, 1), ".");
    if (trim(viaColumn) == trim(piece(left, 1))) return piece(right, 0);
  }
  return {};
}

}  // namespace

std::string mergedFilter(std::string_view filter, std::string_view where) {
  const Pieces items = split(filter, "|||");
  if (items.size() <= 1) return std::string(filter);

  const Pieces conditions = split(where, " and ");
  std::string result;
  for (std::string_view item : items) {
    const Pieces parts = split(item, ";");
    if (parts.empty()) continue;
    if (parts.size() == 1) {
      result += item;
      continue;
    }
    // Only two parts are used: a ";" inside a value cuts the value there.
    const std::string_view alias = aliasOf(parts[0], conditions);
    if (alias.empty()) {
      result.assign(parts[0]).append(parts[1]);
    } else {
      result.append(" ").append(alias).append(".").append(parts[1]);
    }
  }
  return result;
}

}  // namespace tarlo::compile
