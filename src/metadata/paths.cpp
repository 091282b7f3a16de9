#include "metadata/paths.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

#include "text/pieces.h"

namespace tarlo::metadata {
namespace {

struct End {
  Id table;
  Id field;
};

// Ways over one direct link after the other: sorted and each once, as UNION gives them.
using Ways = std::set<PathIds>;

bool touches(const Relation& relation, std::int64_t table) {
  return relation.mainTable == table || relation.relationTable == table;
}

// Between the main table and another one, whatever their direction: the main table's field, then
// the other table's.
std::set<std::array<Id, 2>> links(const std::vector<Relation>& relations, std::int64_t mainTable,
                                  const Id& other) {
  std::set<std::array<Id, 2>> found;
  for (const Relation& relation : relations) {
    if (relation.relationTable == other && relation.mainTable == mainTable) {
      found.insert({relation.mainField, relation.relationField});
    }
    if (relation.mainTable == other && relation.relationTable == mainTable) {
      found.insert({relation.relationField, relation.mainField});
    }
  }
  return found;
}

// As a statement writes one; with a fraction it is the id of nothing.
bool isNumber(std::string_view text) {
  text = text::trim(text);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && std::isfinite(number);
}

class Search {
 public:
  Search(const std::vector<Relation>& relations, std::int64_t mainTable)
      : relations_(relations), mainTable_(mainTable) {}

  std::vector<PathIds> run() {
    for (const Relation& relation : relations_) {
      const End relationEnd{relation.relationTable, relation.relationField};
      const End mainEnd{relation.mainTable, relation.mainField};
      if (relation.mainTable == mainTable_) addDirect(relationEnd, relation.mainField);
      if (relation.relationTable == mainTable_) addDirect(mainEnd, relation.relationField);
      if (!relation.mainTable || !relation.relationTable || touches(relation, mainTable_)) continue;
      if (!addTwoHops(relationEnd, mainEnd) || !addTwoHops(mainEnd, relationEnd)) return {};
    }
    return {ways_.begin(), ways_.end()};
  }

 private:
  void addDirect(const End& far, const Id& nearField) {
    ways_.insert({far.table, far.field, nearField, far.table, far.field, 0});
  }

  // False for a way with a member that has no value.
  bool addTwoHops(const End& far, const End& between) {
    for (const auto& [mainField, nearField] : links(relations_, mainTable_, between.table)) {
      const PathIds way{far.table, far.field, mainField, between.table, between.field, nearField};
      if (!std::ranges::all_of(way, &Id::has_value)) return false;
      ways_.insert(way);
    }
    return true;
  }

  const std::vector<Relation>& relations_;
  std::int64_t mainTable_;
  Ways ways_;
};

}  // namespace

std::optional<std::int64_t> idOf(std::string_view text) {
  text = text::trim(text);
  std::int64_t id = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return id;
}

std::vector<std::int64_t> idsOf(std::string_view list) {
  std::vector<std::int64_t> ids;
  for (const std::string_view piece : text::split(list, ",")) {
    const auto id = idOf(piece);
    if (!id && !isNumber(piece)) return {};
    if (id) ids.push_back(*id);
  }
  return ids;
}

std::vector<PathIds> pathsOver(const std::vector<Relation>& relations, std::int64_t mainTable) {
  return Search(relations, mainTable).run();
}

}  // namespace tarlo::metadata
