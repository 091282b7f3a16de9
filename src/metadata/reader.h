#pragma once
// The dictionary as one operation sees it. What a definition reaches is loaded by one statement,
// which also makes it one state of the dictionary, and look-ups are answered from it: as those of
// dictionary.h, with the same names, order and errors. What was not loaded, and an id that is not
// written as a plain number, is asked of the database by itself. A reader lives as long as its
// operation, so a change of the dictionary counts at the next one.

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "metadata/dictionary.h"
#include "metadata/paths.h"

namespace tarlo::metadata {

class DictionaryReader {
 public:
  explicit DictionaryReader(Page& page) : page_(page) {}
  DictionaryReader(const DictionaryReader&) = delete;
  DictionaryReader& operator=(const DictionaryReader&) = delete;

  struct Reach {
    std::string_view mainTable = {};            // id
    std::string_view relations = {};            // ids, joined by commas
    std::vector<std::string_view> fields = {};  // ids; those that are no number are passed over
    bool wholeTables = true;  // every field of the main table and of those that relations touch
  };
  // Once, before the first look-up. Never raises: what cannot be loaded is asked for later.
  void load(const Reach& reach);

  // As in dictionary.h; none of them raises.
  std::optional<TableNames> tableNames(std::string_view tableId);
  std::optional<FieldNames> fieldNames(std::string_view fieldId);
  std::vector<std::string> fieldIds(std::string_view tableId);
  std::vector<Path> paths(std::string_view mainTable, std::string_view relations);

  // The live fields of a live table, by id. The names live as long as the reader.
  struct Column {
    std::string_view name;
    std::string_view display;
  };
  std::vector<Column> columns(std::string_view tableId);

  // For whoever has a rule of his own about deleted fields and tables, whose names these are too.
  struct FieldState {
    FieldNames names;
    bool isKept = false;  // its flag has a value, and that is not 0
    bool isLive = false;  // for fieldNames
  };
  // Nothing when the field was not loaded; then he asks for it. An empty state is a field that is
  // not there, or whose table is not.
  std::optional<std::optional<FieldState>> fieldState(std::string_view fieldId) const;

  Page& page() const { return page_; }

 private:
  struct Table {
    TableNames names;
    bool isLive = false;
  };
  struct Field {
    std::int64_t id = 0;
    Id table;
    Id kind;
    Id flag;
    std::string_view column;  // in the answer
    std::string_view display;
  };
  void take(const frame::Row& row);
  void takeRelation(const frame::Row& row, std::int64_t id, bool isRelationEnd);
  void collectFields(const Id& mainTable);
  const Field* findField(std::int64_t id) const;

  Page& page_;
  bool isLoaded_ = false;
  std::string mainTable_, relationList_;  // as they were given to load
  Id table_;                              // what the main table's text means
  std::vector<Relation> relations_;
  std::unordered_map<std::int64_t, Table> tables_;
  frame::Rows answer_;
  std::vector<Field> fields_;  // by id
  // The live ones of a table, where all of them are there.
  std::unordered_map<std::int64_t, std::vector<const Field*>> fieldsOf_;
  std::deque<FieldNames> askedFor_;  // names that columns() has given and that were not loaded
  std::unordered_set<std::int64_t> asked_;  // fields asked for by their ids
};

}  // namespace tarlo::metadata
