#include "metadata/relation_table.h"

#include <string>

#include "frame/data.h"
#include "metadata/statement_text.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using variant::spliced;

struct Search {
  Page& page;
  std::string mainTable;
  std::string inRelations;  // " and Zembra_ID in (...)"
};

// Relations that touch the main table at neither end: candidates for the far hop.
Variant farRelations(const Search& search) {
  return frame::execSQLRows(
      search.page,
      joined({"select DDR_RelationTableID,DDR_RelationFieldID,DDR_MainTableID,DDR_MainFieldID"
              " from Zembra_DataDict_Relation where DDR_MainTableID<>",
              search.mainTable, " and DDR_RelationTableID<>", search.mainTable,
              search.inRelations}));
}

// Relations between the main table and another one, whatever their direction: column 0 the main
// table's field, column 1 the other table's.
Variant links(const Search& search, std::string_view table) {
  return frame::execSQLRows(
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
  const Variant near = links(search, intermediate.table);
  if (!near.isArray()) return;
  const Array& rows = near.array();
  for (std::ptrdiff_t row = 0; row <= rows.upperBound(2); ++row) {
    statement += joined({" select ", far.table, ",", far.field, ",", spliced(rows.at(0, row)), ",",
                         intermediate.table, ",", intermediate.field, ",", spliced(rows.at(1, row)),
                         " union "});
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

Variant relationRows(Page& page, const Variant& tableid, const Variant& rel) {
  const Search search{page, spliced(tableid), joined({" and Zembra_ID in (", spliced(rel), ")"})};
  std::string statement;
  const Variant far = farRelations(search);
  if (far.isArray()) {
    const Array& rows = far.array();
    for (std::ptrdiff_t row = 0; row <= rows.upperBound(2); ++row) {
      const End relationEnd{spliced(rows.at(0, row)), spliced(rows.at(1, row))};
      const End mainEnd{spliced(rows.at(2, row)), spliced(rows.at(3, row))};
      appendTwoHopRows(statement, search, relationEnd, mainEnd);
      appendTwoHopRows(statement, search, mainEnd, relationEnd);
    }
  }
  return rowsOrNull(page, statement + directRows(search));
}

}  // namespace

Variant getRelationTable_Query(Page& page, const Variant& tableid, const Variant& rel) {
  // One step for all: an error pending at the end makes the answer Null whichever statement failed.
  ErrorState errors;
  Variant rows;
  errors.run([&] { rows = relationRows(page, tableid, rel); });
  return errors.failed() ? Variant(variant::Null{}) : rows;
}

}  // namespace tarlo::metadata
