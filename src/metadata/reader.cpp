#include "metadata/reader.h"

#include <algorithm>
#include <bit>

#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using frame::Row;
using frame::Rows;
using text::joined;

// Parts of the statement that loads, in its first column.
enum Part : std::int32_t { kRelation = 0, kTable = 1, kField = 2, kFieldOfTable = 3 };

// Filled up with its last id to a power of two, so that lists of many lengths share their
// translations. An empty one names 0, which is the id of nothing.
std::string listOf(std::vector<std::int64_t> ids) {
  if (ids.empty()) ids.push_back(0);
  ids.resize(std::bit_ceil(ids.size()), ids.back());
  std::string list;
  for (const std::int64_t id : ids) {
    if (!list.empty()) list += ',';
    list += std::to_string(id);
  }
  return list;
}

Id idIn(const Row& row, std::size_t column) {
  const Variant& cell = row.value(column);
  if (cell.isNull() || cell.isEmpty()) return std::nullopt;
  return variant::toInt64(cell);
}

std::string textOf(const Id& id) {
  return id ? std::to_string(*id) : "";
}

struct Lists {
  std::string mainTable;
  std::string relations;
  std::string fields;
};

// One column for the part and seven for what it has. Rows come in any order.
std::string loadingStatement(const Lists& lists, bool wholeTables) {
  const std::string touched = joined(
      {"select ", lists.mainTable,
       " union select DDR_MainTableID from Zembra_DataDict_Relation where Zembra_ID in (",
       lists.relations,
       ") union select DDR_RelationTableID from Zembra_DataDict_Relation where Zembra_ID in (",
       lists.relations, ")"});
  const std::string named = joined(
      {"Zembra_ID in (", lists.fields,
       ") or Zembra_ID in (select DDR_MainFieldID from Zembra_DataDict_Relation where Zembra_ID in "
       "(",
       lists.relations,
       ") union select DDR_RelationFieldID from Zembra_DataDict_Relation where Zembra_ID in (",
       lists.relations, "))"});
  constexpr std::string_view kFields =
      ",Zembra_ID,DDF_TableID,DDF_Type,Zembra_Flag,0,DDF_Name,DDF_CName from Zembra_DataDict_Field "
      "where ";
  std::string statement = joined(
      {"select 0,Zembra_ID,DDR_MainTableID,DDR_MainFieldID,DDR_RelationTableID,DDR_RelationFieldID,"
       "'','' from Zembra_DataDict_Relation where Zembra_ID in (",
       lists.relations,
       ") union all select 1,Zembra_ID,Zembra_Flag,0,0,0,DDT_Name,DDT_CName from "
       "Zembra_DataDict_Table where Zembra_ID in (",
       touched, " union select DDF_TableID from Zembra_DataDict_Field where ", named,
       ") union all select 2", kFields, named});
  if (wholeTables) {
    statement += joined({" union all select 3", kFields, "DDF_TableID in (", touched, ")"});
  }
  return statement;
}

bool isSpecialKind(std::int64_t kind) {
  return kind == 1 || (kind >= 10 && kind <= 14);
}

std::vector<Path> textsOf(const std::vector<PathIds>& ids) {
  std::vector<Path> paths;
  for (const PathIds& way : ids) {
    paths.push_back({textOf(way[0]), textOf(way[1]), textOf(way[2]), textOf(way[3]), textOf(way[4]),
                     textOf(way[5])});
  }
  return paths;
}

}  // namespace

void DictionaryReader::load(const Reach& reach) {
  const std::vector<std::int64_t> relations = idsOf(reach.relations);
  const Id mainTable = idOf(reach.mainTable);
  for (const std::string_view field : reach.fields) {
    if (const auto id = idOf(field)) asked_.insert(*id);
  }
  const Lists lists{std::to_string(mainTable.value_or(0)), listOf(relations),
                    listOf({asked_.begin(), asked_.end()})};
  ErrorState errors;
  isLoaded_ = errors.run([&] {
    for (Row row : frame::rows(page_, loadingStatement(lists, reach.wholeTables))) take(row);
  });
  if (!isLoaded_) return;
  mainTable_ = reach.mainTable;
  relationList_ = reach.relations;
  std::erase_if(relations_, [&](const Relation& relation) {
    return std::ranges::find(relations, relation.id) == relations.end();
  });
  std::ranges::sort(relations_, {}, &Relation::id);
  if (reach.wholeTables) collectFields(mainTable);
}

void DictionaryReader::take(const Row& row) {
  const std::int64_t id = variant::toInt64(row.value(1));
  switch (variant::toInt32(row.value(0))) {
    case kRelation:
      relations_.push_back({id, idIn(row, 2), idIn(row, 3), idIn(row, 4), idIn(row, 5)});
      return;
    case kTable:
      tables_[id] = {{row.text(6), row.text(7)}, idIn(row, 2) == 1};
      return;
    default:
      fields_.try_emplace(
          id, Field{idIn(row, 2), idIn(row, 3), idIn(row, 4), row.text(6), row.text(7)});
  }
}

// The live fields of every table that is there as a whole, by id.
void DictionaryReader::collectFields(const Id& mainTable) {
  if (mainTable) fieldsOf_[*mainTable];
  for (const Relation& relation : relations_) {
    if (relation.mainTable) fieldsOf_[*relation.mainTable];
    if (relation.relationTable) fieldsOf_[*relation.relationTable];
  }
  for (const auto& [id, field] : fields_) {
    if (field.flag != 1 || !field.table) continue;
    const auto whole = fieldsOf_.find(*field.table);
    if (whole != fieldsOf_.end()) whole->second.push_back(id);
  }
  for (auto& [table, ids] : fieldsOf_) std::ranges::sort(ids);
}

std::optional<TableNames> DictionaryReader::tableNames(std::string_view tableId) {
  if (const Id id = idOf(tableId); id && isLoaded_) {
    const auto found = tables_.find(*id);
    if (found != tables_.end()) {
      return found->second.isLive ? std::optional(found->second.names) : std::nullopt;
    }
  }
  return metadata::tableNames(page_, tableId);
}

std::optional<FieldNames> DictionaryReader::fieldNames(std::string_view fieldId) {
  const auto state = fieldState(fieldId);
  if (!state) return metadata::fieldNames(page_, fieldId);
  return *state && (*state)->isLive ? std::optional((*state)->names) : std::nullopt;
}

std::vector<std::string> DictionaryReader::fieldIds(std::string_view tableId) {
  if (const Id id = idOf(tableId); id && isLoaded_) {
    const auto found = fieldsOf_.find(*id);
    if (found != fieldsOf_.end()) {
      std::vector<std::string> ids;
      for (const std::int64_t field : found->second) ids.push_back(std::to_string(field));
      return ids;
    }
  }
  return metadata::fieldIds(page_, tableId);
}

std::vector<Path> DictionaryReader::paths(std::string_view mainTable, std::string_view relations) {
  const bool isTheLoaded = isLoaded_ && mainTable == mainTable_ && relations == relationList_;
  if (!isTheLoaded) return metadata::paths(page_, mainTable, relations);
  const Id table = idOf(mainTable);
  return table ? textsOf(pathsOver(relations_, *table)) : std::vector<Path>();
}

std::optional<std::optional<DictionaryReader::FieldState>> DictionaryReader::fieldState(
    std::string_view fieldId) const {
  const Id id = idOf(fieldId);
  if (!id || !isLoaded_) return std::nullopt;
  const auto found = fields_.find(*id);
  if (found == fields_.end()) {
    if (asked_.contains(*id)) return std::optional<FieldState>();
    return std::nullopt;
  }
  const Field& field = found->second;
  const auto table = field.table ? tables_.find(*field.table) : tables_.end();
  if (table == tables_.end()) return std::optional<FieldState>();
  FieldState state;
  state.names = {table->second.names.name,
                 table->second.names.display,
                 field.column,
                 field.display,
                 false,
                 std::to_string(*field.table),
                 field.kind == 1};
  state.names.isSpecial = field.kind && isSpecialKind(*field.kind);
  state.names.isOrdinary = field.kind && !isSpecialKind(*field.kind);
  state.isKept = field.flag.value_or(0) != 0;
  state.isLive = field.flag == 1 && table->second.isLive;
  return std::optional(std::move(state));
}

Rows relationRows(Page& page, std::string_view relations) {
  return frame::rows(
      page, joined({"select Zembra_ID,DDR_MainTableID,DDR_MainFieldID,DDR_RelationTableID,"
                    "DDR_RelationFieldID from Zembra_DataDict_Relation where Zembra_ID in (",
                    listOf(idsOf(relations)), ")"}));
}

std::vector<PathIds> pathIds(Page& page, std::string_view mainTable, std::string_view relations) {
  const Id table = idOf(mainTable);
  if (!table || idsOf(relations).empty()) return {};
  ErrorState errors;
  std::vector<Relation> found;
  errors.run([&] {
    for (Row row : relationRows(page, relations)) {
      found.push_back(
          {variant::toInt64(row.value(0)), idIn(row, 1), idIn(row, 2), idIn(row, 3), idIn(row, 4)});
    }
  });
  return pathsOver(found, *table);
}

std::vector<Path> paths(Page& page, std::string_view mainTable, std::string_view relations) {
  return textsOf(pathIds(page, mainTable, relations));
}

}  // namespace tarlo::metadata
