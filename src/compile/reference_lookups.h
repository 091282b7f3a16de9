#pragma once
// The dictionary statements by which the compilers turn a field id into names. They differ in
// whether deleted fields are found and in whether the id is quoted, and all of them stand.

#include <optional>
#include <string>
#include <string_view>

#include "frame/page.h"

namespace tarlo::compile {

struct FieldNames {
  std::string table;   // physical name
  std::string column;  // physical name
};

// The names in the first row of an answer, elements (0,0) and (1,0); nothing when it has no rows.
std::optional<FieldNames> namesOf(const Variant& rows);
// Appends [table].[column].
void appendReference(std::string& out, const FieldNames& names);

// Rows (table name, column name), or Empty. All raise DatabaseError, so for an id that is no
// number.

// For field tokens: deleted fields are found too.
Variant plainLookup(Page& page, std::string_view id);
// For references in expressions: live fields only.
Variant expressionLookup(Page& page, std::string_view id);
// The same, the id being in single quotes.
Variant quotedExpressionLookup(Page& page, std::string_view id);
// As expressionLookup, with the table's id as a third column.
Variant referenceStatement(Page& page, std::string_view id);
// For statistics and grouping tokens: table name, column name, table display name, field display
// name, table id. Deleted fields are found too.
Variant fieldStatement(Page& page, std::string_view id);

}  // namespace tarlo::compile
