#pragma once
// The texts that a control's definition is put together from, as the wizards post them: the posted
// columns with their captions, the levels of a cascade, the titles of a list. Definitions are told
// in metadata/control_statements.h.

#include <string>
#include <string_view>

#include "control/control_store.h"
#include "frame/page.h"

namespace tarlo::control {

inline constexpr std::string_view kPartMark = "|||";

// A control's value column and text column, [table].[column] each.
struct ControlColumns {
  std::string value;
  std::string text;
};

// realField and viewField.
ControlColumns postedColumns(Page& page);

// The columns of the row that only people read: tables of value and text, once when they are the
// same, and what is left of the posted captions "table.field,table.field". Without captions only
// the separators stand there, as wizards that post none have always written.
void describeColumns(Page& page, const ControlColumns& columns, ControlRow& row);

// The tables alone, for a wizard that posts no captions.
void describeTables(const ControlColumns& columns, ControlRow& row);

// One level for each posted row of relField1, relField2 and relField3: its table, the relating
// column, the value, the text, and the condition unless that is empty; ";" between levels.
std::string postedLevels(Page& page, std::string_view condition);

// The posted titles, joined by "|" and without "<".
std::string postedTitles(Page& page);

}  // namespace tarlo::control
