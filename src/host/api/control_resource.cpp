#include "host/api/resources.h"

#include <fmt/format.h>

#include "frame/data.h"
#include "host/api/api.h"
#include "metadata/stored_schemes.h"

namespace tarlo::host {
namespace {

using control::Control;
using control::ControlKind;

// Null when the control is bound to none.
Json fieldOf(Page& page, const Control& control) {
  const auto field = control::boundField(page, control);
  if (!field) return nullptr;
  return {{"id", field->id},
          {"table", field->names.table},
          {"column", field->names.column},
          {"caption", field->names.display}};
}

}  // namespace

Json describe(Page& page, const Control& control) {
  Json json = {{"id", control.id},
               {"name", control.name},
               {"remark", control.remark},
               {"kind", control::nameOf(control.kind)},
               {"scheme", control.scheme},
               {"field", fieldOf(page, control)},
               {"usable", control::runs(page, control)}};
  if (control.kind == ControlKind::List) json["titles"] = control.titles;
  if (control.kind == ControlKind::Cascade) json["levels"] = control.levels.size() + 1;
  return json;
}

Json describeScheme(Page& page, std::int64_t id) {
  const frame::Rows rows =
      frame::rows(page, fmt::format("select Query_Name,Query_Desc,Query_System,Query_HasStatic,"
                                    "Zembra_ModiDate from Zembra_Query_Main where Query_ID={} and "
                                    "Zembra_Flag<>0 and Query_IsDataAlert=0",
                                    id));
  if (rows.empty()) throw notFound("There is no such scheme.");
  const frame::Row row = rows.front();
  Json columns = Json::array();
  if (const auto titles = metadata::columnTitles(page, std::to_string(id))) columns = *titles;
  return {{"id", id},
          {"name", row.text(0)},
          {"description", row.text(1)},
          {"isSystem", row.text(2) == "1"},
          {"hasStatistics", row.text(3) == "1"},
          {"changed", toJson(row.value(4))},
          {"columns", columns}};
}

}  // namespace tarlo::host
