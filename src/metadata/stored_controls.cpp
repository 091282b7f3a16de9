#include "metadata/stored_controls.h"

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "metadata/stored_rows.h"
#include "text/pieces.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::metadata {
namespace {

using frame::Rows;
using text::kPartMark;
using Answer = FormControl::Answer;

constexpr int kList = static_cast<int>(ControlKind::List);
constexpr int kDropDown = static_cast<int>(ControlKind::DropDown);

// A list's statement is tried before it is given out. One that fails is refused: what would repair
// it tries a join whose condition has nothing behind its equals sign, which no database runs.
FormControl formList(Page& page, std::string_view text) {
  FormControl list{Answer::Given, false, controlDefinition(text, ControlKind::List)};
  ErrorState errors;
  errors.run([&] {
    frame::asDesigner(page, [&] { frame::execSQLLogged(page, list.definition.statement); });
  });
  if (errors.failed()) list.answer = Answer::Refused;
  return list;
}

}  // namespace

ControlKind controlKind(const Variant& cell) {
  const std::int64_t number = cell.isNumber() ? variant::toInt64(cell) : 0;
  return number >= 1 && number <= 3 ? static_cast<ControlKind>(number) : ControlKind::Unknown;
}

ControlDefinition controlDefinition(std::string_view text, ControlKind kind) {
  const auto parts = text::split(text, kPartMark);
  const auto part = [&](std::size_t i) { return std::string(i < parts.size() ? parts[i] : ""); };
  const auto field = [&](std::size_t i) {
    return i < parts.size() ? std::optional(std::string(parts[i])) : std::nullopt;
  };
  switch (kind) {
    case ControlKind::DropDown:
      return {part(0), "", field(1)};
    case ControlKind::Cascade:
      return {part(0), part(1), field(2)};
    case ControlKind::List:
      return {part(0), part(1), std::nullopt};
    case ControlKind::Unknown:
      break;
  }
  return {part(0), "", std::nullopt};
}

std::vector<ControlLevel> controlLevels(std::string_view levels) {
  std::vector<ControlLevel> found;
  for (const std::string_view piece : text::split(levels, ";")) {
    ControlLevel level{text::trim(piece)};
    std::string_view rest = level.written;
    for (std::string_view* part : {&level.table, &level.link, &level.value, &level.text}) {
      const std::size_t comma = rest.find(',');
      *part = rest.substr(0, comma);
      rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
    }
    level.condition = rest;
    found.push_back(level);
  }
  return found;
}

std::string withPart(std::string_view definition, std::string_view part) {
  return text::joined({definition, kPartMark, part});
}

FormControl formControl(Page& page, std::string_view control, const Variant& asked,
                        Version version) {
  ErrorState errors;
  const Rows rows = errors.value(
      [&] { return controlRows(page, control, version, "QF_Relation,QF_FieldType", " = "); });
  if (rows.empty()) return {Answer::Unknown};
  const std::string text = rows.front().text(0);
  if (variant::equals(asked, kList)) return formList(page, text);
  const Variant& kind = rows.front().value(1);
  if (!variant::equals(asked, kind)) return {Answer::OtherKind};
  const bool isDropDown = variant::equals(kind, kDropDown);
  const bool isWhole = isDropDown || text.find(kPartMark) != std::string::npos;
  ControlDefinition definition = controlDefinition(text, ControlKind::Cascade);
  definition.field.reset();
  return {isWhole ? Answer::Given : Answer::Refused, isDropDown, std::move(definition)};
}

BoundTo boundTo(Page& page, std::string_view control, Version version) {
  ErrorState errors;
  const Rows rows = errors.value([&] {
    return controlRows(page, control, version, "QF_Relation,QF_FieldType,QF_NameID", "=");
  });
  if (rows.empty()) return {};
  const frame::Row row = rows.front();
  return {true, controlDefinition(row.text(0), controlKind(row.value(1))).field};
}

}  // namespace tarlo::metadata
