#include "metadata/dictionary_lookups.h"

#include <string>

#include "frame/data.h"
#include "metadata/select_list.h"
#include "metadata/statement_text.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using variant::spliced;

// The resume-next look-ups end alike: an error and an empty answer are both Null.
Variant lookUpById(Page& page, std::string_view statement, const Variant& id) {
  ErrorState errors;
  Variant rows;
  errors.run([&] { rows = rowsOrNull(page, joined({statement, spliced(id)})); });
  return errors.failed() ? Variant(variant::Null{}) : rows;
}

// The first cell, or -1 when the statement gives no row or fails.
Variant firstCellOrNone(Page& page, const std::string& statement) {
  ErrorState errors;
  Variant cell(-1);
  errors.run([&] { cell = frame::firstCell(page, Variant(statement), Variant(-1)); });
  return cell;
}

constexpr std::string_view kFieldNames =
    "select t.DDT_Name,t.DDT_CName,f.DDF_Name,f.DDF_CName,DDF_Type= "
    " case "
    "     when  (f.DDF_Type=1 or f.DDF_Type=10 or f.DDF_Type=11 or f.DDF_Type=12"
    " or f.DDF_Type=13 or f.DDF_Type=14) then 1"
    "     when  (f.DDF_Type<>1 and f.DDF_Type<>10 and f.DDF_Type<>11 and f.DDF_Type<>12"
    " and f.DDF_Type<>13 and f.DDF_Type<>14) then 0"
    " end"
    ",t.Zembra_ID,DDF_Type="
    " case "
    "     when  DDF_Type=1 then 1"
    "     when  DDF_Type<>1 then 0"
    " end"
    " from Zembra_DataDict_Table as t,Zembra_DataDict_Field as f "
    " where f.Zembra_Flag=1 and t.Zembra_Flag=1 and t.Zembra_ID=f.DDF_TableID and f.Zembra_ID=";

}  // namespace

Variant getAllFieldID_Query(Page& page, const Variant& tableid) {
  return lookUpById(page,
                    "select Zembra_ID  from Zembra_DataDict_Field "
                    " where Zembra_Flag=1 and DDF_TableID=",
                    tableid);
}

Variant getTableName_Query(Page& page, const Variant& tableid) {
  return lookUpById(page,
                    "select DDT_Name,DDT_CName  from Zembra_DataDict_Table "
                    " where Zembra_Flag=1 and Zembra_ID=",
                    tableid);
}

Variant getFieldName_Query(Page& page, const Variant& fieldid) {
  return lookUpById(page, kFieldNames, fieldid);
}

Variant getZembraID(Page& page, const Variant& tableid) {
  return rowsOrNull(page, joined({"select Zembra_ID,DDF_Name,DDF_CName from Zembra_DataDict_Field"
                                  " where DDF_TableID=",
                                  spliced(tableid), " and DDF_Type=1"}));
}

Variant get2TableRel(Page& page, const Variant& TableID1, const Variant& TableID2) {
  return rowsOrNull(
      page, joined({"select DDR_MainFieldID, DDR_RelationFieldID from Zembra_DataDict_Relation "
                    "where DDR_RelationTableID=",
                    spliced(TableID1), " and DDR_MainTableID=", spliced(TableID2)}));
}

Variant getRelTableID(Page& page, const Variant& tablename) {
  return rowsOrNull(page, joined({"select distinct DDR_RelationTableID from "
                                  "Zembra_DataDict_Relation a,Zembra_DataDict_Table b "
                                  "where DDT_Name='",
                                  spliced(tablename), "' and a.DDR_MainTableID=b.Zembra_ID"}));
}

Variant getFieldDesc(Page& page, const Variant& fieldname) {
  ErrorState errors;
  std::string name;
  errors.run([&] { name = text::trim(spliced(fieldname)); });
  const auto pieces = text::split(name, ".");
  // A missing piece stays "": the step that would read it fails and is passed over, and the
  // statement then finds nothing.
  std::string_view table = pieces.empty() ? "" : pieces[0];
  std::string_view field = pieces.size() < 2 ? "" : pieces[1];
  errors.run([&] { table = withoutBrackets(table); });
  errors.run([&] { field = withoutBrackets(field); });
  return firstCellOrNone(page, joined({"select a.DDF_CName from Zembra_DataDict_Field as a,"
                                       "Zembra_DataDict_Table as b"
                                       " where a.DDF_TableID=b.Zembra_ID and a.DDF_Name='",
                                       field, "' and b.DDT_Name='", table, "'"}));
}

Variant getTableDesc(Page& page, Variant& tablename) {
  ErrorState errors;
  std::string name;
  errors.run([&] { name = text::trim(spliced(tablename)); });
  errors.run([&] { name = std::string(withoutBrackets(name)); });
  // Null trims to Null, and an array cannot be trimmed: both stay as the caller gave them.
  if (!tablename.isNull() && !tablename.isArray() && !tablename.isObject()) tablename = name;
  return firstCellOrNone(
      page, joined({"select DDT_CName from Zembra_DataDict_Table where DDT_Name='", name, "'"}));
}

}  // namespace tarlo::metadata
