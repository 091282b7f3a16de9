#include "metadata/dictionary.h"

#include "metadata/operations.h"
#include "metadata/paths.h"
#include "metadata/select_list.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using frame::Row;
using frame::Rows;
using text::joined;
using variant::spliced;

// The resume-next look-ups end alike: an error and an empty answer are both no rows.
Rows lookUp(Page& page, std::string_view statement, std::string_view id) {
  ErrorState errors;
  return errors.value([&] { return frame::rows(page, joined({statement, id})); });
}

// The first cell; nothing when the statement gives no row or fails.
std::optional<Variant> firstCellOf(Page& page, const std::string& statement) {
  ErrorState errors;
  const Rows found = errors.value([&] { return frame::rows(page, statement); });
  if (found.empty()) return std::nullopt;
  return found.front().value(0);
}

std::optional<std::string> asText(const std::optional<Variant>& cell) {
  if (!cell) return std::nullopt;
  return spliced(*cell);
}

// -1 is what pages know as "none".
Variant orNone(const std::optional<Variant>& cell) {
  return cell.value_or(Variant(-1));
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

std::optional<Variant> fieldCaptionCell(Page& page, std::string_view qualified) {
  ErrorState errors;
  const auto pieces = text::split(text::trim(qualified), ".");
  // A missing piece stays "": the step that would read it fails and is passed over, and the
  // statement then finds nothing.
  std::string_view table = pieces.empty() ? "" : pieces[0];
  std::string_view field = pieces.size() < 2 ? "" : pieces[1];
  errors.run([&] { table = withoutBrackets(table); });
  errors.run([&] { field = withoutBrackets(field); });
  return firstCellOf(page, joined({"select a.DDF_CName from Zembra_DataDict_Field as a,"
                                   "Zembra_DataDict_Table as b"
                                   " where a.DDF_TableID=b.Zembra_ID and a.DDF_Name='",
                                   field, "' and b.DDT_Name='", table, "'"}));
}

// The name as the statement looks for it: trimmed, and without its brackets.
std::string bareName(std::string_view table) {
  ErrorState errors;
  std::string_view name = text::trim(table);
  errors.run([&] { name = withoutBrackets(name); });
  return std::string(name);
}

std::optional<Variant> tableCaptionCell(Page& page, std::string_view bareName) {
  return firstCellOf(page, joined({"select DDT_CName from Zembra_DataDict_Table where DDT_Name='",
                                   bareName, "'"}));
}

// An argument as text; "" for one that has none.
std::string textOrNone(const Variant& argument) {
  ErrorState errors;
  std::string text;
  errors.run([&] { text = spliced(argument); });
  return text;
}

}  // namespace

Rows fieldIdRows(Page& page, std::string_view tableId) {
  return lookUp(page,
                "select Zembra_ID  from Zembra_DataDict_Field "
                " where Zembra_Flag=1 and DDF_TableID=",
                tableId);
}

Rows tableNameRows(Page& page, std::string_view tableId) {
  return lookUp(page,
                "select DDT_Name,DDT_CName  from Zembra_DataDict_Table "
                " where Zembra_Flag=1 and Zembra_ID=",
                tableId);
}

Rows fieldNameRows(Page& page, std::string_view fieldId) {
  return lookUp(page, kFieldNames, fieldId);
}

Rows keyFieldRows(Page& page, std::string_view tableId) {
  return frame::rows(page, joined({"select Zembra_ID,DDF_Name,DDF_CName from Zembra_DataDict_Field"
                                   " where DDF_TableID=",
                                   tableId, " and DDF_Type=1"}));
}

std::optional<TableNames> tableNames(Page& page, std::string_view tableId) {
  const Rows found = tableNameRows(page, tableId);
  if (found.empty()) return std::nullopt;
  const Row row = found.front();
  return TableNames{row.text(0), row.text(1)};
}

std::optional<FieldNames> fieldNames(Page& page, std::string_view fieldId) {
  const Rows found = fieldNameRows(page, fieldId);
  if (found.empty()) return std::nullopt;
  const Row row = found.front();
  return FieldNames{row.text(0),        row.text(1), row.text(2),        row.text(3),
                    row.text(4) == "1", row.text(5), row.text(6) == "1", row.text(4) == "0"};
}

std::vector<std::string> fieldIds(Page& page, std::string_view tableId) {
  std::vector<std::string> ids;
  for (Row row : fieldIdRows(page, tableId)) ids.push_back(row.text(0));
  return ids;
}

std::vector<KeyField> keyFields(Page& page, std::string_view tableId) {
  std::vector<KeyField> keys;
  for (Row row : keyFieldRows(page, tableId)) {
    keys.push_back({row.text(0), row.text(1), row.text(2)});
  }
  return keys;
}

std::optional<std::string> fieldCaption(Page& page, std::string_view qualified) {
  return asText(fieldCaptionCell(page, qualified));
}

std::optional<std::string> tableCaption(Page& page, std::string_view table) {
  return asText(tableCaptionCell(page, bareName(table)));
}

Variant getAllFieldID_Query(Page& page, const Variant& tableid) {
  return fieldIdRows(page, textOrNone(tableid)).tableOrNull();
}

Variant getTableName_Query(Page& page, const Variant& tableid) {
  return tableNameRows(page, textOrNone(tableid)).tableOrNull();
}

Variant getFieldName_Query(Page& page, const Variant& fieldid) {
  return fieldNameRows(page, textOrNone(fieldid)).tableOrNull();
}

Variant getRelationTable_Query(Page& page, const Variant& tableid, const Variant& rel) {
  const std::vector<PathIds> ways = pathIds(page, textOrNone(tableid), textOrNone(rel));
  if (ways.empty()) return variant::Null{};
  Array table({5, static_cast<std::ptrdiff_t>(ways.size()) - 1});
  for (std::size_t row = 0; row < ways.size(); ++row) {
    for (std::size_t column = 0; column < ways[row].size(); ++column) {
      const Id& id = ways[row][column];
      table.at(static_cast<std::ptrdiff_t>(column), static_cast<std::ptrdiff_t>(row)) =
          id ? Variant(static_cast<std::int32_t>(*id)) : Variant(variant::Null{});
    }
  }
  return table;
}

Variant getZembraID(Page& page, const Variant& tableid) {
  return keyFieldRows(page, spliced(tableid)).tableOrNull();
}

Variant get2TableRel(Page& page, const Variant& TableID1, const Variant& TableID2) {
  return frame::rows(page, joined({"select DDR_MainFieldID, DDR_RelationFieldID from "
                                   "Zembra_DataDict_Relation where DDR_RelationTableID=",
                                   spliced(TableID1), " and DDR_MainTableID=", spliced(TableID2)}))
      .tableOrNull();
}

Variant getRelTableID(Page& page, const Variant& tablename) {
  return frame::rows(page, joined({"select distinct DDR_RelationTableID from "
                                   "Zembra_DataDict_Relation a,Zembra_DataDict_Table b "
                                   "where DDT_Name='",
                                   spliced(tablename), "' and a.DDR_MainTableID=b.Zembra_ID"}))
      .tableOrNull();
}

Variant getFieldDesc(Page& page, const Variant& fieldname) {
  return orNone(fieldCaptionCell(page, textOrNone(fieldname)));
}

Variant getTableDesc(Page& page, Variant& tablename) {
  const std::string name = bareName(textOrNone(tablename));
  // Null trims to Null, and an array cannot be trimmed: both stay as the caller gave them.
  if (!tablename.isNull() && !tablename.isArray() && !tablename.isObject()) tablename = name;
  return orNone(tableCaptionCell(page, name));
}

}  // namespace tarlo::metadata
