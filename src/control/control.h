#pragma once
// A control scheme as it is stored. Its definition is parts joined by "|||":
//   drop-down  statement, field id
//   cascade    statement, levels, field id
//   list       statement, titles
// Levels are joined by ";", each "table,link,value,text[,condition]", titles by "|". Nothing is
// escaped. A template's drop-down is its statement alone, and no template has a field.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"
#include "metadata/dictionary.h"

namespace tarlo::control {

// The numbers are those of the rows.
enum class ControlKind { Unknown = 0, DropDown = 1, Cascade = 2, List = 3 };
std::string_view nameOf(ControlKind kind);  // "drop-down", "cascade", "list", "unknown"

// The parts as they are written; "" for one that is not there.
struct Definition {
  std::string statement;
  std::string rest;   // levels or titles
  std::string field;  // id
};
Definition definitionOf(std::string_view text, ControlKind kind);

// A level of a cascade below the first box: columns and table as they stand in statements.
struct ControlLevel {
  std::string written;  // the whole level
  std::string table;
  std::string link;  // the column that has the value chosen in the level above
  std::string value;
  std::string text;
  std::string condition;
};

struct Control {
  std::int64_t id = 0;
  std::string name;
  std::string remark;
  ControlKind kind = ControlKind::Unknown;
  std::int64_t scheme = 0;
  std::string statement;             // that fills the control or its first box
  std::vector<std::string> titles;   // of a list's columns behind the row's id
  std::vector<ControlLevel> levels;  // of a cascade
  std::string field;                 // id of the one that it is bound to, "" for none
};

// Nothing when there is none of that id, or a deleted one. Raises DatabaseError.
std::optional<Control> loadControl(Page& page, std::int64_t id);
// Those on the scheme that are not deleted, by id. Raises DatabaseError.
std::vector<Control> controlsOn(Page& page, std::int64_t scheme);

// Whether the control has a statement and the database runs it. Not in the operation log.
bool runs(Page& page, const Control& control);

struct BoundField {
  std::int64_t id;
  metadata::FieldNames names;
};
// Nothing for a control that is bound to none, or to one that is no longer there.
std::optional<BoundField> boundField(Page& page, const Control& control);

// The statement of a cascade's level, from 1: value, text, and as third column the link. Nothing
// when there is no such level.
std::optional<std::string> levelStatement(const Control& control, std::size_t level);

}  // namespace tarlo::control
