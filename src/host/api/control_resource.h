#pragma once
// Control schemes and schemes as the JSON interface tells them, and the statement behind a
// control's rows.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "frame/page.h"
#include "host/api/json_value.h"

namespace tarlo::host {

// A control scheme.
struct ControlResource {
  std::int64_t id = 0;
  std::string name;
  std::string remark;
  int kind = 0;  // 1 drop-down, 2 cascade, 3 list
  std::int64_t scheme = 0;
  std::string statement;            // that fills the control or its first level
  std::vector<std::string> titles;  // of a list's columns behind the row's id
  std::vector<std::string> levels;  // of a cascade, each "table,link,value,text[,condition]"
};
// Nothing when there is none of that id, or a deleted one. Raises DatabaseError.
std::optional<ControlResource> readControl(Page& page, std::int64_t id);

Json describe(Page& page, const ControlResource& control);

// The statement of a cascade's level, from 1: value, text, and as third column the one that has the
// chosen value of the level above. Throws ApiError 404 when there is no such level.
std::string levelStatement(const ControlResource& control, std::size_t level);

// A scheme that is not deleted, with its columns. Throws ApiError 404; raises DatabaseError.
Json describeScheme(Page& page, std::int64_t id);

}  // namespace tarlo::host
