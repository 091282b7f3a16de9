#include "control/control.h"

#include <fmt/format.h>

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::control {
namespace {

constexpr std::string_view kRows =
    "select QF_ID,QF_Name,QF_Desc,QF_FieldType,QF_NameID,QF_Relation from Zembra_Query_Field";

Control controlOf(const frame::Row& row) {
  Control control;
  control.id = variant::toInt64(row.value(0));
  control.name = row.text(1);
  control.remark = row.text(2);
  control.kind = metadata::controlKind(row.value(3));
  control.scheme = row.value(4).isNumber() ? variant::toInt64(row.value(4)) : 0;
  metadata::ControlDefinition definition = metadata::controlDefinition(row.text(5), control.kind);
  control.statement = std::move(definition.statement);
  control.field = std::move(definition.field).value_or("");
  if (control.kind == ControlKind::Cascade) {
    for (const metadata::ControlLevel& level : metadata::controlLevels(definition.rest)) {
      control.levels.emplace_back(level.written);
    }
  }
  if (control.kind == ControlKind::List) {
    for (const std::string_view title : text::split(definition.rest, "|")) {
      control.titles.emplace_back(text::trim(title));
    }
  }
  return control;
}

}  // namespace

std::string_view nameOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::DropDown:
      return "drop-down";
    case ControlKind::Cascade:
      return "cascade";
    case ControlKind::List:
      return "list";
    case ControlKind::Unknown:
      break;
  }
  return "unknown";
}

std::optional<Control> loadControl(Page& page, std::int64_t id) {
  const frame::Rows rows =
      frame::rows(page, fmt::format("{} where QF_ID={} and Zembra_Flag<>0", kRows, id));
  if (rows.empty()) return std::nullopt;
  return controlOf(rows.front());
}

std::vector<Control> controlsOn(Page& page, std::int64_t scheme) {
  std::vector<Control> controls;
  for (frame::Row row : frame::rows(
           page,
           fmt::format("{} where QF_NameID={} and Zembra_Flag<>0 order by QF_ID", kRows, scheme))) {
    controls.push_back(controlOf(row));
  }
  return controls;
}

bool runs(Page& page, const Control& control) {
  if (control.statement.empty()) return false;
  ErrorState err;
  return err.run(
      [&] { frame::asDesigner(page, [&] { frame::execSQL(page, control.statement); }); });
}

std::optional<BoundField> boundField(Page& page, const Control& control) {
  if (control.field.empty()) return std::nullopt;
  auto names = metadata::fieldNames(page, control.field);
  if (!names) return std::nullopt;
  return BoundField{std::stoll(control.field), std::move(*names)};
}

std::optional<std::string> levelStatement(const Control& control, std::size_t level) {
  if (level == 0 || level > control.levels.size()) return std::nullopt;
  const metadata::ControlLevel below = metadata::controlLevels(control.levels[level - 1]).front();
  if (below.text.empty()) return std::nullopt;  // the level is not whole
  std::string sql = text::joined(
      {"select ", below.value, ",", below.text, ",", below.link, " from ", below.table});
  if (!below.condition.empty()) sql.append(" where ").append(below.condition);
  return sql;
}

}  // namespace tarlo::control
