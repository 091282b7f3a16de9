#include "siblings/cascade_operations.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "frame/data.h"
#include "siblings/json_answer.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/sql_text.h"
#include "variant/text.h"

namespace tarlo::siblings {
namespace {

using variant::spliced;
using variant::sqlText;

// What the platform's own pages build cascades over.
struct PlatformTable {
  std::string_view table;
  std::array<std::string_view, 3> columns;
};
constexpr std::array<PlatformTable, 1> kPlatformTables = {
    {{"Zembra_DataDict_Table", {"DDT_DirID", "Zembra_ID", "DDT_CName"}}}};

constexpr std::array<std::string_view, 3> kConditions = {
    "", "Zembra_Flag <> 0", "Zembra_Flag <> 0 and DDT_Status <> 2 and DDT_Status <> 4"};

struct Level {
  std::string table;
  std::string link;
  std::string value;
  std::string text;
  std::string condition;
  std::string parent;
};

std::string_view withoutBrackets(std::string_view name) {
  name = variant::trim(name);
  if (name.size() > 1 && name.front() == '[' && name.back() == ']') {
    name = name.substr(1, name.size() - 2);
  }
  return name;
}

// The column of `column`, `table.column` or `[table].[column]`; nothing for one of another table.
std::optional<std::string> columnOf(std::string_view name, std::string_view table) {
  const std::size_t dot = name.find('.');
  if (dot != std::string_view::npos) {
    if (!variant::equalsNoCase(withoutBrackets(name.substr(0, dot)), table)) return {};
    name = name.substr(dot + 1);
  }
  return std::string(withoutBrackets(name));
}

bool isPlatformColumn(const Level& level, std::string_view column) {
  const auto isSame = [](std::string_view name) {
    return [name](std::string_view other) { return variant::equalsNoCase(name, other); };
  };
  return std::ranges::any_of(kPlatformTables, [&](const PlatformTable& known) {
    return variant::equalsNoCase(known.table, level.table) &&
           std::ranges::any_of(known.columns, isSame(column));
  });
}

bool isDictionaryColumn(Page& page, const Level& level, std::string_view column) {
  const Variant rows = frame::execSQLRows(
      page,
      "select b.Zembra_ID from Zembra_DataDict_Table as a,Zembra_DataDict_Field as b where "
      "a.DDT_Name=" +
          sqlText(level.table) + " and b.DDF_Name=" + sqlText(column) +
          " and b.DDF_TableID=a.Zembra_ID and a.Zembra_Flag<>0 and b.Zembra_Flag<>0");
  return rows.isArray();
}

// Nothing when a name is refused.
std::optional<Level> requestedLevel(Page& page) {
  const auto value = [&](std::string_view key) { return spliced(page.request.value(key)); };
  Level level{std::string(withoutBrackets(value("table"))), "", "", "", "", value("parent")};
  const std::string condition = value("condition");
  const auto known = std::ranges::find(kConditions, variant::trim(condition));
  if (known == kConditions.end()) return {};
  level.condition = *known;
  for (auto [key, column] : {std::pair{"link", &Level::link}, std::pair{"value", &Level::value},
                             std::pair{"text", &Level::text}}) {
    const auto name = columnOf(value(key), level.table);
    if (!name) return {};
    if (!isPlatformColumn(level, *name) && !isDictionaryColumn(page, level, *name)) return {};
    level.*column = *name;
  }
  return level;
}

std::string statementOf(const Level& level) {
  std::string sql = "select top 5000 [" + level.value + "],[" + level.text + "] from [" +
                    level.table + "] where [" + level.link + "]=" + sqlText(level.parent);
  if (!level.condition.empty()) sql += " and " + level.condition;
  return sql + " order by [" + level.text + "]";
}

}  // namespace

void sendCascadeOptions(Page& page) {
  const auto level = requestedLevel(page);
  nlohmann::json list = nlohmann::json::array();
  if (!level) return sendJson(page, list.dump());
  const Variant rows = frame::execSQLRows(page, statementOf(*level));
  if (rows.isArray()) {
    const Array& cells = rows.array();
    for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
      list.push_back({spliced(cells.at(0, row)), spliced(cells.at(1, row))});
    }
  }
  sendJson(page, list.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace tarlo::siblings
