#pragma once
// What the statements of controls are put together from: a value column and a text column of
// tables, a condition from the wizards' filter area, columns of a scheme. Columns come as
// [table].[column], and go in as they were posted.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

// "and" for a statement that has conditions, "where" for one that has none, blanks around.
std::string_view conditionWord(std::string_view statement);

// The statement with a condition behind it, or in front of its grouping: ` where ` or ` and ` and
// the condition.
std::string withCondition(std::string_view statement, std::string_view condition);

// The writers end the condition of a filter in different ways, and statements stored long ago show
// each of them.
enum class FilterUse {
  SaveUserControl,         // no line ends, in brackets, a dangling "and" or "or" stays inside
  PreviewUserControl,      // no line ends, a dangling "and" or "or" is cut
  SaveTemplateControl,     // the posted text trimmed and without line ends, then cut likewise
  PreviewTemplateControl,  // cut likewise, line ends stay
};

// A filter is rows joined by "|||"; a row is column, operator code, value and logic joined by ",".
// Nothing is escaped: a comma in the value moves the rest of the row one part on, an apostrophe
// ends the literal, and the database refuses what comes of it. "" for an empty filter. An operator
// code that is none of 1 to 8 leaves the operator of the row before in force, which is none on the
// first row. A row that misses its value gives nothing.
std::string compileControlFilter(std::string_view filter, FilterUse use);

std::string withoutLineEnds(std::string_view text);

// Titles and select expressions of a scheme. Lists choose its columns by their numbers, from 1.
class SchemeColumns {
 public:
  SchemeColumns() = default;  // has no column
  // Raises what the scheme's columns raise.
  SchemeColumns(Page& page, std::string_view scheme);

  // `,expression as [title]` for every number. A number that is no column's raises error 9, text
  // that is no number error 13.
  std::string selectItem(std::string_view number) const;

 private:
  std::optional<std::vector<std::string>> titles_;
  std::optional<std::vector<std::string>> expressions_;
};

// Text `number` of the columns, "" for 0. Error 9 beyond them, 13 for text that is no number and
// when there are none.
std::string textAt(const std::optional<std::vector<std::string>>& columns, std::string_view number);

// The scheme's statement from its first " from " on; the whole of one without. Error 94 for a
// scheme that has no statement.
std::string fromPart(Page& page, std::string_view scheme);

}  // namespace tarlo::control
