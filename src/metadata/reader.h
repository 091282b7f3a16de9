#pragma once
// The dictionary as one operation sees it. What a definition reaches is loaded by one statement,
// which also makes it one state of the dictionary, and look-ups are answered from it: as those of
// dictionary.h, with the same names, order and errors. What was not loaded, and an id that is not
// written as a plain number, is asked of the database by itself. A reader lives as long as its
// operation, so a change of the dictionary counts at the next one.

#include <cstdint>
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
    Id table;
    Id kind;
    Id flag;
    std::string column;
    std::string display;
  };
  void take(const frame::Row& row);
  void collectFields(const Id& mainTable);

  Page& page_;
  bool isLoaded_ = false;
  std::string mainTable_, relationList_;  // as they were given to load
  std::vector<Relation> relations_;
  std::unordered_map<std::int64_t, Table> tables_;
  std::unordered_map<std::int64_t, Field> fields_;
  std::unordered_map<std::int64_t, std::vector<std::int64_t>> fieldsOf_;  // live ones; whole tables
  std::unordered_set<std::int64_t> asked_;  // fields asked for by their ids
};

}  // namespace tarlo::metadata
