#include <algorithm>
#include <array>
#include <string>

#include <nlohmann/json.hpp>

#include "frame/data.h"
#include "frame/statement_scope.h"
#include "metadata/stored_controls.h"
#include "org/may_call.h"
#include "scheme/extras.h"
#include "services/cascade_levels.h"
#include "siblings/page_operations.h"
#include "text/fold.h"
#include "text/sql_text.h"
#include "variant/convert.h"

namespace tarlo::siblings {
namespace {

using services::CascadeLevel;
using text::sqlText;
using variant::spliced;

// What the platform's own pages build cascades over.
struct PlatformTable {
  std::string_view table;
  std::array<std::string_view, 3> columns;
};
constexpr std::array<PlatformTable, 1> kPlatformTables = {
    {{"Zembra_DataDict_Table", {"DDT_DirID", "Zembra_ID", "DDT_CName"}}}};

constexpr std::array<std::string_view, 3> kConditions = {
    "", "Zembra_Flag <> 0", "Zembra_Flag <> 0 and DDT_Status <> 2 and DDT_Status <> 4"};

bool isPlatformColumn(const CascadeLevel& level, std::string_view column) {
  const auto isSame = [](std::string_view name) {
    return [name](std::string_view other) { return text::equalsNoCase(name, other); };
  };
  return std::ranges::any_of(kPlatformTables, [&](const PlatformTable& known) {
    return text::equalsNoCase(known.table, level.table) &&
           std::ranges::any_of(known.columns, isSame(column));
  });
}

bool isDictionaryColumn(Page& page, const CascadeLevel& level, std::string_view column) {
  const std::string sql =
      "select b.Zembra_ID from Zembra_DataDict_Table as a,Zembra_DataDict_Field as b where "
      "a.DDT_Name=" +
      sqlText(level.table) + " and b.DDF_Name=" + sqlText(column) +
      " and b.DDF_TableID=a.Zembra_ID and a.Zembra_Flag<>0 and b.Zembra_Flag<>0";
  return !frame::rows(page, sql).empty();
}

std::string asked(Page& page, std::string_view key) {
  return spliced(page.request.value(key));
}

// Whether a live cascade has the level. The search in the database only narrows what is read.
bool isStored(Page& page, const CascadeLevel& level) {
  const std::string sql =
      "select QF_Relation from Zembra_Query_Field where QF_FieldType=2 and Zembra_Flag<>0 "
      "and CHARINDEX(" +
      sqlText(level.text) + ",QF_Relation) > 0";
  for (const frame::Row row : frame::rows(page, sql)) {
    const auto cascade = metadata::controlDefinition(row.text(0), metadata::ControlKind::Cascade);
    if (std::ranges::count(services::cascadeLevels(cascade.rest), level) > 0) return true;
  }
  return false;
}

// The rights under which the level's rows are read. Error 70 when it is nobody's to ask for.
database::StatementRights rightsOf(Page& page, const CascadeLevel& level) {
  if (const auto offered = services::OfferedCascades::of(page)->find(level)) return *offered;
  const bool isForForms = org::mayCall(page, {frame::Caller::FormUser});
  if (isForForms && isStored(page, level)) return frame::kDesignersRights;
  throw RuntimeError(ErrorNumber::PermissionDenied, "a level that no page has offered");
}

bool isKnown(Page& page, const CascadeLevel& level) {
  const auto isColumn = [&](const std::string& column) {
    return isPlatformColumn(level, column) || isDictionaryColumn(page, level, column);
  };
  return std::ranges::find(kConditions, level.condition) != kConditions.end() &&
         isColumn(level.link) && isColumn(level.value) && isColumn(level.text);
}

std::string statementOf(const CascadeLevel& level, const std::string& parent) {
  std::string sql = "select top 5000 [" + level.value + "],[" + level.text + "] from [" +
                    level.table + "] where [" + level.link + "]=" + sqlText(parent);
  if (!level.condition.empty()) sql += " and " + level.condition;
  return sql + " order by [" + level.text + "]";
}

frame::Rows rowsOf(Page& page, const CascadeLevel& level) {
  const database::StatementRights rights = rightsOf(page, level);
  if (!isKnown(page, level)) return {};
  const frame::StatementScope scope(page, rights);
  return frame::rows(page, statementOf(level, asked(page, "parent")));
}

void send(Page& page, const nlohmann::json& json) {
  sendJson(page, json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace

// As bytes, since text would be encoded like a page.
void sendJson(Page& page, const std::string& json) {
  page.response.setHeader("Content-Type", "application/json; charset=utf-8");
  page.response.setHeader("Cache-Control", "no-store");
  page.response.binaryWrite(json);
}

void sendCascadeOptions(Page& page) {
  const auto level =
      services::cascadeLevel(asked(page, "table"), asked(page, "link"), asked(page, "value"),
                             asked(page, "text"), asked(page, "condition"));
  nlohmann::json list = nlohmann::json::array();
  const frame::Rows rows = level ? rowsOf(page, *level) : frame::Rows();
  for (const frame::Row row : rows) list.push_back({row.text(0), row.text(1)});
  send(page, list);
}

void sendSchemeState(Page& page) {
  const scheme::SchemeState state = scheme::schemeState(page, page.request.value("prikeyid"));
  send(page, {{"stamp", state.stamp}, {"change", state.change}});
}

}  // namespace tarlo::siblings
