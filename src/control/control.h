#pragma once
// A control scheme as a whole: the row, and its definition (metadata/stored_controls.h) with the
// levels and titles taken apart. Pages, forms, the JSON API and the command line read it here.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"
#include "metadata/dictionary.h"
#include "metadata/stored_controls.h"

namespace tarlo::control {

using metadata::ControlKind;
std::string_view nameOf(ControlKind kind);  // "drop-down", "cascade", "list", "unknown"

struct Control {
  std::int64_t id = 0;
  std::string name;
  std::string remark;
  ControlKind kind = ControlKind::Unknown;
  std::int64_t scheme = 0;
  std::string statement;            // that fills the control or its first box
  std::vector<std::string> titles;  // of a list's columns behind the row's id
  std::vector<std::string> levels;  // of a cascade, as they are written
  std::string field;                // id of the one that it is bound to, "" for none
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
