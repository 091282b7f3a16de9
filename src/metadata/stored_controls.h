#pragma once
// What is stored with a control scheme, as it is now or as a frozen version of it. Its definition
// is parts joined by "|||":
//   drop-down  statement, field id
//   cascade    statement, levels, field id
//   list       statement, titles
// Levels are joined by ";", each "table,link,value,text[,condition]", titles by "|". Nothing is
// escaped. A template's drop-down is its statement alone, and no template has a field.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"
#include "metadata/stored_schemes.h"

namespace tarlo::metadata {

// The numbers are those of the rows.
enum class ControlKind { Unknown = 0, DropDown = 1, Cascade = 2, List = 3 };
// The kind of a row's cell; Unknown for any other number, text and Null.
ControlKind controlKind(const Variant& cell);

// The parts as they are written; "" for one that is not there.
struct ControlDefinition {
  std::string statement = {};
  std::string rest = {};                  // levels or titles
  std::optional<std::string> field = {};  // id
};
ControlDefinition controlDefinition(std::string_view text, ControlKind kind);
// A level of a cascade below the first box: columns and table as they stand in statements, "" for
// what is not there. A comma in the condition belongs to it.
struct ControlLevel {
  std::string_view written = {};  // the whole level
  std::string_view table = {};
  std::string_view link = {};  // the column that has the value chosen in the level above
  std::string_view value = {};
  std::string_view text = {};
  std::string_view condition = {};
};
// They point into `levels`.
std::vector<ControlLevel> controlLevels(std::string_view levels);

// A further part behind those of a definition.
std::string withPart(std::string_view definition, std::string_view part);

// What a form gets for a control that it asks for as one of a kind.
struct FormControl {
  // Refused: a list whose statement does not run, a cascade without levels.
  enum class Answer { Given, Unknown, OtherKind, Refused };
  Answer answer = Answer::Unknown;
  bool isDropDown = false;            // whose definition is the statement alone
  ControlDefinition definition = {};  // the field left out
};
// `asked` is the kind as the form names it, compared with the row's; a control that is asked for as
// a list is given whatever its kind. A list's statement is run, and a run that works is in the
// operation log; a statement too long for the log is answered with the log's words. Never raises.
FormControl formControl(Page& page, std::string_view control, const Variant& asked,
                        Version version = Version::Current);

struct BoundTo {
  bool isKnown = false;              // there is such a control
  std::optional<std::string> field;  // id
};
// Never raises.
BoundTo boundTo(Page& page, std::string_view control, Version version = Version::Current);

}  // namespace tarlo::metadata
