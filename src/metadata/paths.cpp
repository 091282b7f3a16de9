#include "metadata/paths.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "frame/data.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

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

std::vector<std::int64_t> relationIds(Page& page, std::string_view list) {
  std::vector<std::int64_t> ids;
  bool isPlain = true;
  for (const std::string_view piece : text::split(list, ",")) {
    const auto id = idOf(piece);
    isPlain = isPlain && id.has_value();
    if (id) ids.push_back(*id);
  }
  if (isPlain) return ids;
  // Whatever else a statement may say there: other forms of numbers, line ends, null.
  ids.clear();
  ErrorState errors;
  errors.run([&] {
    for (const frame::Row row :
         frame::rows(page, text::joined({"select Zembra_ID from Zembra_DataDict_Relation where "
                                         "Zembra_ID in (",
                                         list, ")"}))) {
      ids.push_back(variant::toInt64(row.value(0)));
    }
  });
  return ids;
}

Id tableId(Page& page, std::string_view text) {
  const Id id = idOf(text);
  // No text is no table; the database would only refuse the question, and the log tell it.
  if (id || text::trim(text).empty()) return id;
  ErrorState errors;
  Id found;
  errors.run([&] {
    const frame::Rows rows = frame::rows(
        page, text::joined({"select DDR_MainTableID from Zembra_DataDict_Relation where "
                            "DDR_MainTableID=",
                            text,
                            " union select DDR_RelationTableID from Zembra_DataDict_Relation where "
                            "DDR_RelationTableID=",
                            text}));
    if (rows.size() == 1) found = variant::toInt64(rows.front().value(0));
  });
  return found;
}

std::vector<PathIds> pathsOver(const std::vector<Relation>& relations, std::int64_t mainTable) {
  return Search(relations, mainTable).run();
}

}  // namespace tarlo::metadata
