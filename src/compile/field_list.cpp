#include <string>
#include <string_view>
#include <vector>

#include "compile/clauses.h"
#include "metadata/dictionary.h"

namespace tarlo::compile {
namespace {

using metadata::Path;
using metadata::TableNames;
using Member = std::string Path::*;

// One hop of a path: to a table, by its field, from a field of the left table.
struct Hop {
  Member table;
  Member farField;
  Member nearField;
};
constexpr Hop kDirect = {&Path::table, &Path::field, &Path::mainField};
// Deliberate: the pairing is crossed. The near hop pairs the main table's field with the
// intermediate table's field of the FAR relation, the far hop the intermediate table's field of the
// near relation with the far table's field. Where the intermediate table uses one field for both,
// these are the relations' own joins.
constexpr Hop kNear = {&Path::intermediate, &Path::farField, &Path::mainField};
constexpr Hop kFar = {&Path::table, &Path::field, &Path::nearField};

// Puts the three lists together while it walks the paths.
class FieldList {
 public:
  FieldList(DictionaryReader& dictionary, std::string_view mainTable,
            const std::vector<Path>& paths)
      : dictionary_(dictionary), mainTable_(mainTable), paths_(paths) {}

  void addPaths();
  void addMainTable();
  ClauseSet take() {
    cutSuffix(clauses_.select, ",");
    return std::move(clauses_);
  }

 private:
  // The table that a hop leads to, as its row writes it.
  struct Joined {
    TableNames table;
    std::string number;  // the row's index for a later occurrence, "" for the first
    std::string written() const { return table.name + number; }
  };

  void join(std::size_t row, const Hop& hop);
  void readNames(TableNames& into, std::string_view tableId);
  void appendFrom();
  void appendColumns(std::string_view tableId, const Joined& source);

  DictionaryReader& dictionary_;
  std::string_view mainTable_;
  const std::vector<Path>& paths_;
  ClauseSet clauses_;
  TableNames left_;        // the left side of join conditions
  Joined joined_;          // keeps its last name when a table is not found
  std::string joinField_;  // cleared once a row, not once a hop
};

// A table that is not in the dictionary leaves the name as it was.
void FieldList::readNames(TableNames& into, std::string_view tableId) {
  if (auto names = dictionary_.tableNames(tableId)) into = std::move(*names);
}

void FieldList::join(std::size_t row, const Hop& hop) {
  const Path& path = paths_[row];
  readNames(joined_.table, path.*hop.table);
  joined_.number.clear();
  for (std::size_t j = 0; j < row && joined_.number.empty(); ++j) {
    if (paths_[j].*hop.table == path.*hop.table) joined_.number = std::to_string(row);
  }
  if (const auto far = dictionary_.fieldNames(path.*hop.farField)) joinField_ = far->column;
  if (const auto near = dictionary_.fieldNames(path.*hop.nearField)) {
    clauses_.where += "[" + left_.name + "].[" + near->column + "]=[" + joined_.written() + "].[" +
                      joinField_ + "] and ";
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
void FieldList::appendColumns(std::string_view tableId, const Joined& source) {
  const std::string prefix = "[" + source.written() + "].[";
  const std::string title = "] as [" + source.table.display + ".";
  const std::string end = source.number + "],";
  for (const DictionaryReader::Column& column : dictionary_.columns(tableId)) {
    clauses_.select.append(prefix).append(column.name);
    clauses_.select.append(title).append(column.display).append(end);
  }
}

// Deliberate: the left table is what the rows before have left in it, so a direct row behind a
// two-hop row is joined to the intermediate table of that row. The far hop starts from the
// intermediate table's physical name even when the near hop gave it an alias.
void FieldList::addPaths() {
  readNames(left_, mainTable_);
  for (std::size_t row = 0; row < paths_.size(); ++row) {
    const Path& path = paths_[row];
    joinField_.clear();
    if (path.isDirect()) {
      join(row, kDirect);
    } else {
      readNames(left_, mainTable_);
      join(row, kNear);
      readNames(left_, path.intermediate);
      join(row, kFar);
    }
    appendColumns(path.table, joined_);
  }
}

// Always last, never under an alias. One that is not in the dictionary leaves the brackets empty,
// whatever the rows before have left in the name.
void FieldList::addMainTable() {
  left_ = dictionary_.tableNames(mainTable_).value_or(TableNames{});
  clauses_.from += "[" + left_.name + "]";
  clauses_.where += "[" + left_.name + "].[Zembra_Flag]=1";
  appendColumns(mainTable_, {left_, ""});
}

}  // namespace

ClauseSet fieldListClauses(DictionaryReader& dictionary, std::string_view mainTable,
                           std::string_view relations) {
  const std::vector<Path> paths = dictionary.paths(mainTable, relations);
  FieldList list(dictionary, mainTable, paths);
  if (!paths.empty()) list.addPaths();
  list.addMainTable();
  return list.take();
}

void cutSuffix(std::string& text, std::string_view suffix) {
  if (text.ends_with(suffix)) text.resize(text.size() - suffix.size());
}

}  // namespace tarlo::compile
