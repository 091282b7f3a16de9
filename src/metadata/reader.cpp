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
enum Part : std::int32_t { kMainEnd = 0, kRelationEnd = 1, kTable = 2, kField = 3 };

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

// Without a copy; "" for a column without a value.
std::string_view viewOf(const Row& row, std::size_t column) {
  const Variant& cell = row.value(column);
  return cell.isText() ? std::string_view(cell.text()) : std::string_view();
}

std::string textOf(const Id& id) {
  return id ? std::to_string(*id) : "";
}

struct Lists {
  std::string mainTable;
  std::string relations;
  std::string fields;
};

// One column for the part, four numbers and two names. Rows come in any order.
std::string loadingStatement(const Lists& lists, bool wholeTables) {
  const auto ends = [&](std::string_view column) {
    return joined({"select ", column, " from Zembra_DataDict_Relation where Zembra_ID in (",
                   lists.relations, ")"});
  };
  const std::string touched =
      joined({"select ", lists.mainTable, " union ", ends("DDR_MainTableID"), " union ",
              ends("DDR_RelationTableID")});
  const std::string named =
      joined({"Zembra_ID in (", lists.fields, ") or Zembra_ID in (", ends("DDR_MainFieldID"),
              " union ", ends("DDR_RelationFieldID"), ")"});
  constexpr std::string_view kFields =
      " union all select 3,Zembra_ID,DDF_TableID,DDF_Type,Zembra_Flag,DDF_Name,DDF_CName from "
      "Zembra_DataDict_Field where ";
  std::string statement =
      joined({ends("0,Zembra_ID,DDR_MainTableID,DDR_MainFieldID,0,'',''"), " union all ",
              ends("1,Zembra_ID,DDR_RelationTableID,DDR_RelationFieldID,0,'',''"),
              " union all select 2,Zembra_ID,Zembra_Flag,0,0,DDT_Name,DDT_CName from "
              "Zembra_DataDict_Table where Zembra_ID in (",
              touched, " union select DDF_TableID from Zembra_DataDict_Field where ", named, ")",
              kFields, named});
  if (wholeTables) statement += joined({kFields, "DDF_TableID in (", touched, ")"});
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
  const std::vector<std::int64_t> relations = relationIds(page_, reach.relations);
  const Id mainTable = tableId(page_, reach.mainTable);
  for (const std::string_view field : reach.fields) {
    if (const auto id = idOf(field)) asked_.insert(*id);
  }
  const Lists lists{std::to_string(mainTable.value_or(0)), listOf(relations),
                    listOf({asked_.begin(), asked_.end()})};
  ErrorState errors;
  isLoaded_ = errors.run([&] {
    answer_ = frame::rows(page_, loadingStatement(lists, reach.wholeTables));
    for (Row row : answer_) take(row);
  });
  if (!isLoaded_) return;
  mainTable_ = reach.mainTable;
  table_ = mainTable;
  relationList_ = reach.relations;
  std::erase_if(relations_, [&](const Relation& relation) {
    return std::ranges::find(relations, relation.id) == relations.end();
  });
  std::ranges::sort(relations_, {}, &Relation::id);
  // A field may have come twice, named and as one of its table.
  std::ranges::sort(fields_, {}, &Field::id);
  const auto isSame = [](const Field& a, const Field& b) { return a.id == b.id; };
  fields_.erase(std::unique(fields_.begin(), fields_.end(), isSame), fields_.end());
  if (reach.wholeTables) collectFields(mainTable);
}

void DictionaryReader::take(const Row& row) {
  const std::int64_t id = variant::toInt64(row.value(1));
  const auto part = static_cast<Part>(variant::toInt32(row.value(0)));
  if (part == kField) {
    fields_.push_back(
        {id, idIn(row, 2), idIn(row, 3), idIn(row, 4), viewOf(row, 5), viewOf(row, 6)});
  } else if (part == kTable) {
    tables_[id] = {{row.text(5), row.text(6)}, idIn(row, 2) == 1};
  } else {
    takeRelation(row, id, part == kRelationEnd);
  }
}

void DictionaryReader::takeRelation(const Row& row, std::int64_t id, bool isRelationEnd) {
  auto relation = std::ranges::find(relations_, id, &Relation::id);
  if (relation == relations_.end()) {
    relation = relations_.insert(relation, Relation{id, {}, {}, {}, {}});
  }
  (isRelationEnd ? relation->relationTable : relation->mainTable) = idIn(row, 2);
  (isRelationEnd ? relation->relationField : relation->mainField) = idIn(row, 3);
}

// The live fields of every table that is there as a whole, by id.
void DictionaryReader::collectFields(const Id& mainTable) {
  if (mainTable) fieldsOf_[*mainTable];
  for (const Relation& relation : relations_) {
    if (relation.mainTable) fieldsOf_[*relation.mainTable];
    if (relation.relationTable) fieldsOf_[*relation.relationTable];
  }
  for (const Field& field : fields_) {
    if (field.flag != 1 || !field.table) continue;
    const auto whole = fieldsOf_.find(*field.table);
    if (whole != fieldsOf_.end()) whole->second.push_back(&field);
  }
}

const DictionaryReader::Field* DictionaryReader::findField(std::int64_t id) const {
  const auto found = std::ranges::lower_bound(fields_, id, {}, &Field::id);
  return found != fields_.end() && found->id == id ? &*found : nullptr;
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
      for (const Field* field : found->second) ids.push_back(std::to_string(field->id));
      return ids;
    }
  }
  return metadata::fieldIds(page_, tableId);
}

std::vector<DictionaryReader::Column> DictionaryReader::columns(std::string_view tableId) {
  std::vector<Column> columns;
  const Id id = idOf(tableId);
  const auto whole = id ? fieldsOf_.find(*id) : fieldsOf_.end();
  const auto table = id ? tables_.find(*id) : tables_.end();
  if (whole != fieldsOf_.end() && table != tables_.end()) {
    if (!table->second.isLive) return columns;
    for (const Field* field : whole->second) columns.push_back({field->column, field->display});
    return columns;
  }
  for (const std::string& field : fieldIds(tableId)) {
    auto names = fieldNames(field);
    if (!names) continue;
    const FieldNames& kept = askedFor_.emplace_back(std::move(*names));
    columns.push_back({kept.column, kept.display});
  }
  return columns;
}

std::vector<Path> DictionaryReader::paths(std::string_view mainTable, std::string_view relations) {
  const bool isTheLoaded = isLoaded_ && mainTable == mainTable_ && relations == relationList_;
  if (!isTheLoaded) return metadata::paths(page_, mainTable, relations);
  return table_ ? textsOf(pathsOver(relations_, *table_)) : std::vector<Path>();
}

std::optional<std::optional<DictionaryReader::FieldState>> DictionaryReader::fieldState(
    std::string_view fieldId) const {
  const Id id = idOf(fieldId);
  if (!id || !isLoaded_) return std::nullopt;
  const Field* found = findField(*id);
  if (found == nullptr) {
    if (asked_.contains(*id)) return std::optional<FieldState>();
    return std::nullopt;
  }
  const Field& field = *found;
  const auto table = field.table ? tables_.find(*field.table) : tables_.end();
  if (table == tables_.end()) return std::optional<FieldState>();
  FieldState state;
  const TableNames& names = table->second.names;
  const bool isSpecial = field.kind.has_value() && isSpecialKind(*field.kind);
  state.names = FieldNames{names.name,
                           names.display,
                           std::string(field.column),
                           std::string(field.display),
                           isSpecial,
                           std::to_string(*field.table),
                           field.kind == 1,
                           field.kind.has_value() && !isSpecial};
  state.isKept = field.flag.value_or(0) != 0;
  state.isLive = field.flag == 1 && table->second.isLive;
  return std::optional(std::move(state));
}

std::vector<PathIds> pathIds(Page& page, std::string_view mainTable, std::string_view relations) {
  const std::vector<std::int64_t> ids = relationIds(page, relations);
  const Id table = ids.empty() ? Id() : tableId(page, mainTable);
  if (!table) return {};
  ErrorState errors;
  std::vector<Relation> found;
  errors.run([&] {
    for (Row row : frame::rows(
             page, joined({"select Zembra_ID,DDR_MainTableID,DDR_MainFieldID,DDR_RelationTableID,"
                           "DDR_RelationFieldID from Zembra_DataDict_Relation where Zembra_ID in (",
                           listOf(ids), ")"}))) {
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
