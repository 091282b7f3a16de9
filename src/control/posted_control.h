#pragma once
// What the wizards post of a control, and the parts of a row and of a definition that come of it:
// columns with their captions, levels, titles, and the statements of templates, whose wizard posts
// ids of fields.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "control/control_store.h"
#include "frame/page.h"

namespace tarlo::control {

std::string posted(Page& page, std::string_view key);  // "" when it was not

// A control's value column and text column, [table].[column] each.
struct ControlColumns {
  std::string value;
  std::string text;
};
// realField and viewField.
ControlColumns postedColumns(Page& page);
// The same for a template: without line ends and blanks at their ends; a comma in front of the
// second one, which the form's empty box of the same name leaves, is cut.
ControlColumns postedTemplateColumns(Page& page);

// The columns of the row that only people read: tables of value and text, once when they are the
// same, and what is left of the posted captions "table.field,table.field". Without captions only
// the separators stand there, as wizards that post none have always written.
void describeColumns(Page& page, const ControlColumns& columns, ControlRow& row);
// The tables alone, for a wizard that posts no captions.
void describeTables(const ControlColumns& columns, ControlRow& row);

// One level for each posted row of relField1, relField2 and relField3: its table, the relating
// column, the value, the text, and the condition unless that is empty.
std::string postedLevels(Page& page, std::string_view condition);

// The posted titles, joined by "|" and without "<".
std::string postedTitles(Page& page);
// The numbers of the posted viewfield, without the word "undefined" that its widget may add.
std::vector<std::string> postedColumnNumbers(Page& page);

// The statement of a template's drop-down: both columns from their tables, live rows that meet the
// compiled filter. The condition on live rows names no table, so two tables that both have the
// column refuse it: deliberate.
std::string templateDropDown(Page& page, const ControlColumns& columns, const std::string& filter);

// The cascade of a template from posted `viewfields` and `rel`, joined by "|||".
struct TemplateCascade {
  std::string statement;  // of the first box, which is the field chosen last
  std::string levels;     // of the further boxes, the field chosen first at the end
};
// Nothing when only one field was chosen. What is not in the dictionary is left out; never raises.
std::optional<TemplateCascade> postedCascade(Page& page);

// The dictionary's id of a table by its physical name. Error 13 when there is none; DatabaseError.
std::string tableIdOf(Page& page, const std::string& table);

}  // namespace tarlo::control
