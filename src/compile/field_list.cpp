#include "compile/field_list.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "compile/clause_set.h"
#include "metadata/dictionary_lookups.h"
#include "metadata/relation_table.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::compile {
namespace {

using variant::spliced;

using RelationRow = std::array<std::string, 6>;

std::vector<RelationRow> relationRows(const Variant& table) {
  std::vector<RelationRow> rows;
  if (!table.isArray()) return rows;
  const Array& cells = table.array();
  rows.resize(static_cast<std::size_t>(cells.upperBound(2)) + 1);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      rows[row][column] =
          spliced(cells.at(static_cast<std::ptrdiff_t>(column), static_cast<std::ptrdiff_t>(row)));
    }
  }
  return rows;
}

bool isDirect(const RelationRow& row) {
  return row[0] == row[3] && row[1] == row[4];
}

struct TableName {
  std::string name;
  std::string display;
};

// Puts the three lists together while it walks the relation table.
class FieldList {
 public:
  FieldList(Page& page, const Variant& mainTable) : page_(page), mainTable_(mainTable) {}

  void addRelations(const std::vector<RelationRow>& rows);
  void addMainTable();
  ClauseSet take() {
    cutSuffix(clauses_.select, ",");
    return std::move(clauses_);
  }

 private:
  // The table that a hop leads to, as this row writes it.
  struct Joined {
    TableName table;
    std::string number;  // the row index for a later occurrence, "" for the first
    std::string written() const { return table.name + number; }
  };

  void addDirect(const std::vector<RelationRow>& rows, std::size_t i);
  void addTwoHop(const std::vector<RelationRow>& rows, std::size_t i);
  void join(const std::vector<RelationRow>& rows, std::size_t i, std::size_t tableColumn,
            std::size_t farField, std::size_t nearField);
  void readName(TableName& into, const Variant& tableId);
  void appendFrom();
  void appendColumns(const Variant& tableId, const Joined& source);

  Page& page_;
  const Variant& mainTable_;
  ClauseSet clauses_;
  TableName left_;         // the left side of join conditions
  Joined joined_;          // keeps its last name when a table is not found
  std::string joinField_;  // cleared once a row, not once a hop
};

// A table that is not in the dictionary leaves the name as it was.
void FieldList::readName(TableName& into, const Variant& tableId) {
  const Variant rows = metadata::getTableName_Query(page_, tableId);
  if (!rows.isArray()) return;
  into.name = spliced(rows.array().at(0, 0));
  into.display = spliced(rows.array().at(1, 0));
}

// One hop of row i: to the table of `tableColumn`, whose field is in `farField`, from the left
// table, whose field is in `nearField`.
void FieldList::join(const std::vector<RelationRow>& rows, std::size_t i, std::size_t tableColumn,
                     std::size_t farField, std::size_t nearField) {
  const RelationRow& row = rows[i];
  readName(joined_.table, Variant(row[tableColumn]));
  joined_.number.clear();
  for (std::size_t j = 0; j < i && joined_.number.empty(); ++j) {
    if (rows[j][tableColumn] == row[tableColumn]) joined_.number = std::to_string(i);
  }
  const Variant far = metadata::getFieldName_Query(page_, Variant(row[farField]));
  if (far.isArray()) joinField_ = spliced(far.array().at(2, 0));
  const Variant near = metadata::getFieldName_Query(page_, Variant(row[nearField]));
  if (near.isArray()) {
    clauses_.where += "[" + left_.name + "].[" + spliced(near.array().at(2, 0)) + "]=[" +
                      joined_.written() + "].[" + joinField_ + "] and ";
  }
  appendFrom();
}

// The flag condition is appended in every case, so it may stand several times.
void FieldList::appendFrom() {
  const std::string bracketed = "[" + joined_.written() + "]";
  if (clauses_.from.find(bracketed) == std::string::npos) {
    if (!joined_.number.empty()) clauses_.from += "[" + joined_.table.name + "] as ";
    clauses_.from += bracketed + ",";
  }
  clauses_.where += bracketed + ".[Zembra_Flag]=1 and ";
}

// In an output title the number stands behind the field's display name, at the very end.
void FieldList::appendColumns(const Variant& tableId, const Joined& source) {
  const Variant ids = metadata::getAllFieldID_Query(page_, tableId);
  if (!ids.isArray()) return;
  const std::string prefix = "[" + source.written() + "].[";
  const std::string title = "] as [" + source.table.display + ".";
  const std::string end = source.number + "],";
  for (std::ptrdiff_t i = 0; i <= ids.array().upperBound(2); ++i) {
    const Variant field = metadata::getFieldName_Query(page_, ids.array().at(0, i));
    if (!field.isArray()) continue;
    const Array& names = field.array();
    for (std::ptrdiff_t row = 0; row <= names.upperBound(2); ++row) {
      clauses_.select.append(prefix).append(spliced(names.at(2, row)));
      clauses_.select.append(title).append(spliced(names.at(3, row))).append(end);
    }
  }
}

// Deliberate: the left table is what the rows before have left in it, so a direct row behind a
// two-hop row is joined to the intermediate table of that row.
void FieldList::addDirect(const std::vector<RelationRow>& rows, std::size_t i) {
  join(rows, i, 0, 1, 2);
  appendColumns(Variant(rows[i][0]), joined_);
}

// Deliberate: the pairing is crossed. The near hop pairs the main table's field with the
// intermediate table's field of the FAR relation, the far hop the intermediate table's field of the
// near relation with the far table's field. Where the intermediate table uses one field for both,
// these are the relations' own joins. The far hop starts from the intermediate table's physical
// name even when the near hop gave it an alias.
void FieldList::addTwoHop(const std::vector<RelationRow>& rows, std::size_t i) {
  readName(left_, mainTable_);
  join(rows, i, 3, 4, 2);
  readName(left_, Variant(rows[i][3]));
  join(rows, i, 0, 1, 5);
  appendColumns(Variant(rows[i][0]), joined_);
}

void FieldList::addRelations(const std::vector<RelationRow>& rows) {
  readName(left_, mainTable_);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    joinField_.clear();
    if (isDirect(rows[i])) {
      addDirect(rows, i);
    } else {
      addTwoHop(rows, i);
    }
  }
}

// Always last, never under an alias.
void FieldList::addMainTable() {
  readName(left_, mainTable_);
  clauses_.from += "[" + left_.name + "]";
  clauses_.where += "[" + left_.name + "].[Zembra_Flag]=1";
  appendColumns(mainTable_, {left_, ""});
}

}  // namespace

Variant getQuery_Field_In(Page& page, const Variant& sTable, const Variant& rel) {
  FieldList list(page, sTable);
  const auto rows = relationRows(metadata::getRelationTable_Query(page, sTable, rel));
  if (!rows.empty()) list.addRelations(rows);
  list.addMainTable();
  return toVariant(list.take());
}

}  // namespace tarlo::compile
