#pragma once
// The filter of a control: what the wizards' filter area posts, as a condition of the control's
// statement.
//
// Rows joined by "|||"; a row is column, operator code, value and logic joined by ",". Nothing is
// escaped: a comma in the value moves the rest of the row one part on, an apostrophe ends the
// literal, and the database refuses what comes of it.

#include <string>
#include <string_view>

namespace tarlo::control {

// The writers end the condition in different ways, and statements stored long ago show each of
// them.
enum class FilterUse {
  SaveUserControl,         // no line ends, in brackets, a dangling "and" or "or" stays inside
  PreviewUserControl,      // no line ends, a dangling "and" or "or" is cut
  SaveTemplateControl,     // the posted text trimmed and without line ends, then cut likewise
  PreviewTemplateControl,  // cut likewise, line ends stay
};

// "" for an empty filter. An operator code that is none of 1 to 8 leaves the operator of the row
// before in force, which is none on the first row. A row that misses its value gives nothing.
std::string compileControlFilter(std::string_view filter, FilterUse use);

// The text without carriage returns and line feeds.
std::string withoutLineEnds(std::string_view text);

}  // namespace tarlo::control
