#pragma once
// The data dictionary as the house reads it: names, fields, keys and relations of tables.
//
// Ids and names come from requests and stored definitions and go into the statements as they are,
// names between single quotes: an id that is none makes the statement fail. Look-ups that never
// raise answer that with nothing; the others raise DatabaseError.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/data.h"

namespace tarlo::metadata {

struct TableNames {
  std::string name;     // physical
  std::string display;  // as users see it
};
// Of a live table; never raises.
std::optional<TableNames> tableNames(Page& page, std::string_view tableId);

struct FieldNames {
  std::string table;         // physical name
  std::string tableDisplay;  // as users see it
  std::string column;        // physical name
  std::string display;
  bool isSpecial = false;  // of one of the kinds 1 and 10 to 14
  std::string tableId;
  bool isKey = false;
  bool isOrdinary = false;  // of a kind that is not special; one without a kind is neither
};
// Of a live field of a live table; never raises.
std::optional<FieldNames> fieldNames(Page& page, std::string_view fieldId);

// Ids of the table's live fields, in the database's order; never raises.
std::vector<std::string> fieldIds(Page& page, std::string_view tableId);

struct KeyField {
  std::string id;
  std::string column;
  std::string display;
};
// The table's key fields, deleted ones included.
std::vector<KeyField> keyFields(Page& page, std::string_view tableId);

// What users see for a field given as [table].[column] or table.column, and for a table given with
// or without brackets. Nothing when there is none; neither raises.
std::optional<std::string> fieldCaption(Page& page, std::string_view qualified);
std::optional<std::string> tableCaption(Page& page, std::string_view table);

// One way of reaching a table from a main table over selected relations. All members are ids.
struct Path {
  std::string table;         // the table reached
  std::string field;         // its field
  std::string mainField;     // the main table's field of the first hop
  std::string intermediate;  // the table between; the table reached itself when there is none
  std::string farField;      // the field of `intermediate` in the second hop; else as `field`
  std::string nearField;     // the field of `intermediate` in the first hop; else 0

  bool isDirect() const { return table == intermediate && field == farField; }
};
// At most two hops, in the database's order. `relations` is a comma-joined list of relation ids.
// None when nothing is reached, and where the database refuses the ids; never raises.
std::vector<Path> paths(Page& page, std::string_view mainTable, std::string_view relations);

// Each look-up's answer as its operation gives it: the rows of its statement. The first four never
// raise; a failed statement gives no rows.
frame::Rows tableNameRows(Page& page, std::string_view tableId);
frame::Rows fieldNameRows(Page& page, std::string_view fieldId);
frame::Rows fieldIdRows(Page& page, std::string_view tableId);
frame::Rows keyFieldRows(Page& page, std::string_view tableId);

}  // namespace tarlo::metadata
