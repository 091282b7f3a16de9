#pragma once
// The statements that fill drop-downs and cascades: a value column and a text column of tables.
// Columns come as [table].[column], and go in as they were posted.

#include <string>
#include <string_view>

#include "frame/page.h"

namespace tarlo::control {

// The part in front of the first dot, brackets kept; the whole text without one.
std::string tablePart(std::string_view column);
// The part behind it up to the next dot; "" without one.
std::string columnPart(std::string_view column);

// The value and the text from the value's table alone, live rows that meet the condition. A text
// column of another table is not joined: the database refuses the statement.
std::string oneTableStatement(std::string_view value, std::string_view text,
                              std::string_view condition);

// The value and the text from their tables, without the condition on live rows. Two tables are
// joined as the scheme's statement joins them: by the first word of its conditions that names both.
// The last character of the conditions is not read, and a scheme without conditions gives a
// statement that does not run: both deliberate, stored statements show them.
std::string twoTableStatement(Page& page, const std::string& scheme, std::string_view value,
                              std::string_view text);

// "and" for a statement that has conditions, "where" for one that has none, a blank in front.
std::string_view conditionWord(std::string_view statement);

// The statement with a condition behind it, or in front of its grouping: ` where ` or ` and ` and
// the condition.
std::string withCondition(std::string_view statement, std::string_view condition);

}  // namespace tarlo::control
