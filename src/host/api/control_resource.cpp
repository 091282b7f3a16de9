#include "host/api/control_resource.h"

#include <fmt/format.h>

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "host/api/api.h"
#include "metadata/operations.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::host {
namespace {

using variant::spliced;

std::string_view kindName(int kind) {
  switch (kind) {
    case 1:
      return "drop-down";
    case 2:
      return "cascade";
    case 3:
      return "list";
    default:
      return "unknown";
  }
}

std::vector<std::string> pieces(const std::string& text, std::string_view separator) {
  std::vector<std::string> list;
  for (const std::string_view piece : text::split(text, separator)) {
    list.emplace_back(text::trim(piece));
  }
  return list;
}

Variant rowsOf(Page& page, const std::string& sql) {
  return frame::execSQLRows(page, Variant(sql));
}

// Whether the statement runs: a list that does not is given to no form.
bool runs(Page& page, const std::string& statement) {
  ErrorState err;
  err.run([&] { frame::asDesigner(page, [&] { frame::execSQL(page, statement); }); });
  return !err.failed();
}

// What a form gets, read without a row of the operation log.
void readDefinition(Page& page, const std::string& text, ControlResource& control) {
  const auto parts = text::split(text, "|||");
  if (!parts.empty()) control.statement = parts[0];
  if (control.kind == 3 && !runs(page, control.statement)) control.statement.clear();
  if (parts.size() < 2) return;
  const std::string rest(parts[1]);
  if (control.kind == 2) control.levels = pieces(rest, ";");
  if (control.kind == 3) control.titles = pieces(rest, "|");
}

bool isUsable(Page& page, const ControlResource& control) {
  if (control.statement.empty()) return false;
  return control.kind == 3 ||
         runs(page, control.statement);  // a list has been tried when it was read
}

// The field that the control is bound to, null when there is none.
Json boundField(Page& page, const ControlResource& control) {
  const Variant field = metadata::Control2Fieldid(page, control.id, false);
  const std::string id = spliced(field);
  const Variant row = metadata::getFieldName_Query(page, field);
  if (!row.isArray()) return nullptr;
  const auto cell = [&](std::ptrdiff_t column) { return spliced(row.array().at(column, 0)); };
  return {{"id", std::stoll(id)}, {"table", cell(0)}, {"column", cell(2)}, {"caption", cell(3)}};
}

}  // namespace

std::optional<ControlResource> readControl(Page& page, std::int64_t id) {
  const Variant rows =
      rowsOf(page, fmt::format("select QF_Name,QF_Desc,QF_FieldType,QF_NameID,QF_Relation from "
                               "Zembra_Query_Field "
                               "where QF_ID={} and Zembra_Flag<>0",
                               id));
  if (!rows.isArray()) return std::nullopt;
  const Array& cells = rows.array();
  ControlResource control;
  control.id = id;
  control.name = spliced(cells.at(0, 0));
  control.remark = spliced(cells.at(1, 0));
  control.kind = cells.at(2, 0).isNumber() ? variant::toInt32(cells.at(2, 0)) : 0;
  control.scheme = cells.at(3, 0).isNumber() ? variant::toInt64(cells.at(3, 0)) : 0;
  readDefinition(page, spliced(cells.at(4, 0)), control);
  return control;
}

Json describe(Page& page, const ControlResource& control) {
  Json json = {{"id", control.id},
               {"name", control.name},
               {"remark", control.remark},
               {"kind", kindName(control.kind)},
               {"scheme", control.scheme},
               {"field", boundField(page, control)},
               {"usable", isUsable(page, control)}};
  if (control.kind == 3) json["titles"] = control.titles;
  if (control.kind == 2) json["levels"] = control.levels.size() + 1;
  return json;
}

std::string levelStatement(const ControlResource& control, std::size_t level) {
  if (level == 0 || level > control.levels.size()) throw notFound("The control has no such level.");
  const auto parts = text::split(control.levels[level - 1], ",");
  if (parts.size() < 4) throw notFound("The control has no such level.");
  std::string sql = fmt::format("select {},{},{} from {}", parts[2], parts[3], parts[1], parts[0]);
  if (parts.size() > 4 && !parts[4].empty()) sql.append(" where ").append(parts[4]);
  return sql;
}

Json describeScheme(Page& page, std::int64_t id) {
  const Variant rows =
      rowsOf(page, fmt::format("select Query_Name,Query_Desc,Query_System,Query_HasStatic,"
                               "Zembra_ModiDate from Zembra_Query_Main where Query_ID={} and "
                               "Zembra_Flag<>0 and Query_IsDataAlert=0",
                               id));
  if (!rows.isArray()) throw notFound("There is no such scheme.");
  const Array& cells = rows.array();
  const Variant titles = metadata::getQueryAllTitle(page, id, false);
  Json columns = Json::array();
  for (std::ptrdiff_t i = 1; titles.isArray() && i <= titles.array().upperBound(); ++i) {
    columns.push_back(spliced(titles.array().at(i)));
  }
  return {{"id", id},
          {"name", spliced(cells.at(0, 0))},
          {"description", spliced(cells.at(1, 0))},
          {"isSystem", spliced(cells.at(2, 0)) == "1"},
          {"hasStatistics", spliced(cells.at(3, 0)) == "1"},
          {"changed", toJson(cells.at(4, 0))},
          {"columns", columns}};
}

}  // namespace tarlo::host
