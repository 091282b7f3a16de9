// The search for the ways in which selected relations lead from a main table to other tables.

#include <string>

#include "metadata/dictionary.h"
#include "metadata/operations.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using frame::Row;
using frame::Rows;
using text::joined;

struct Search {
  Page& page;
  std::string_view mainTable;
  std::string inRelations;  // " and Zembra_ID in (...)"
};

// Relations that touch the main table at neither end: candidates for the far hop.
Rows farRelations(const Search& search) {
  return frame::rows(
      search.page,
      joined({"select DDR_RelationTableID,DDR_RelationFieldID,DDR_MainTableID,DDR_MainFieldID"
              " from Zembra_DataDict_Relation where DDR_MainTableID<>",
              search.mainTable, " and DDR_RelationTableID<>", search.mainTable,
              search.inRelations}));
}

// Relations between the main table and another one, whatever their direction: the main table's
// field, then the other table's.
Rows links(const Search& search, std::string_view table) {
  return frame::rows(
      search.page,
      joined({"select DDR_MainFieldID,DDR_RelationFieldID from Zembra_DataDict_Relation"
              " where DDR_RelationTableID=",
              table, " and DDR_MainTableID=", search.mainTable, search.inRelations,
              " union select DDR_RelationFieldID,DDR_MainFieldID from "
              "Zembra_DataDict_Relation where DDR_MainTableID=",
              table, " and DDR_RelationTableID=", search.mainTable, search.inRelations}));
}

struct End {
  std::string table;
  std::string field;
};

// A literal row for each link of the intermediate table, each followed by " union ".
void appendTwoHopRows(std::string& statement, const Search& search, const End& far,
                      const End& intermediate) {
  for (Row near : links(search, intermediate.table)) {
    statement +=
        joined({" select ", far.table, ",", far.field, ",", near.text(0), ",", intermediate.table,
                ",", intermediate.field, ",", near.text(1), " union "});
  }
}

std::string directRows(const Search& search) {
  return joined(
      {"select DDR_RelationTableID,DDR_RelationFieldID,DDR_MainFieldID,"
       "DDR_RelationTableID,DDR_RelationFieldID,0 from Zembra_DataDict_Relation"
       " where DDR_MainTableID=",
       search.mainTable, search.inRelations,
       " union select DDR_MainTableID,DDR_MainFieldID,DDR_RelationFieldID,"
       "DDR_MainTableID,DDR_MainFieldID,0 from Zembra_DataDict_Relation"
       " where DDR_RelationTableID=",
       search.mainTable, search.inRelations});
}

Rows found(const Search& search) {
  std::string statement;
  for (Row far : farRelations(search)) {
    const End relationEnd{far.text(0), far.text(1)};
    const End mainEnd{far.text(2), far.text(3)};
    appendTwoHopRows(statement, search, relationEnd, mainEnd);
    appendTwoHopRows(statement, search, mainEnd, relationEnd);
  }
  return frame::rows(search.page, statement + directRows(search));
}

}  // namespace

// One step for all: an error makes the answer empty whichever statement failed.
Rows pathRows(Page& page, std::string_view mainTable, std::string_view relations) {
  ErrorState errors;
  return errors.value([&] {
    return found({page, mainTable, joined({" and Zembra_ID in (", relations, ")"})});
  });
}

std::vector<Path> paths(Page& page, std::string_view mainTable, std::string_view relations) {
  std::vector<Path> paths;
  for (Row row : pathRows(page, mainTable, relations)) {
    paths.push_back({row.text(0), row.text(1), row.text(2), row.text(3), row.text(4), row.text(5)});
  }
  return paths;
}

Variant getRelationTable_Query(Page& page, const Variant& tableid, const Variant& rel) {
  ErrorState errors;
  return errors
      .value([&] { return pathRows(page, variant::spliced(tableid), variant::spliced(rel)); })
      .tableOrNull();
}

}  // namespace tarlo::metadata
