#include "control/control_statement.h"

#include <algorithm>

#include "control/control_filter.h"
#include "metadata/operations.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"
#include "variant/text.h"

namespace tarlo::control {
namespace {

constexpr std::string_view kWhere = " where ";

// The first word of the scheme's conditions that names both tables; "" when none does.
std::string joinOf(const Variant& statement, const std::string& first, const std::string& second) {
  const std::string text = variant::toText(statement);
  const auto where = text.find(kWhere);
  if (where == std::string::npos) return {};
  std::string_view conditions = std::string_view(text).substr(where + kWhere.size());
  conditions = variant::left(conditions, static_cast<std::ptrdiff_t>(variant::len(conditions)) - 1);
  for (const std::string_view word : text::split(conditions, " ")) {
    if (word.find(first) != word.npos && word.find(second) != word.npos) return std::string(word);
  }
  return {};
}

}  // namespace

std::string tablePart(std::string_view column) {
  return std::string(column.substr(0, column.find('.')));
}

std::string columnPart(std::string_view column) {
  const auto parts = text::split(column, ".");
  return parts.size() > 1 ? std::string(parts[1]) : std::string();
}

std::string oneTableStatement(std::string_view value, std::string_view text,
                              std::string_view condition) {
  const std::string table = withoutLineEnds(tablePart(value));
  std::string sql = "select ";
  sql.append(value).append(",").append(text).append(" from ").append(table).append(kWhere);
  sql.append(table).append(".Zembra_Flag<> 0");
  if (!condition.empty()) sql.append(" and ").append(condition);
  return withoutLineEnds(sql);
}

std::string twoTableStatement(Page& page, const std::string& scheme, std::string_view value,
                              std::string_view text) {
  const std::string first = tablePart(value);
  const std::string second = tablePart(text);
  std::string sql = "select ";
  sql.append(value).append(",").append(text).append(" from ");
  if (first == second) return sql + first;
  const Variant statement = metadata::getQuerySQL(page, Variant(scheme), false);
  ErrorState err;
  err.run([&] {
    if (variant::toText(statement).find(kWhere) == std::string::npos) return;
    sql.append(first).append(",").append(second);
    const std::string join = joinOf(statement, first, second);
    if (!join.empty()) sql.append(kWhere).append(join);
  });
  return sql;
}

std::string_view conditionWord(std::string_view statement) {
  return statement.find(kWhere) == statement.npos ? kWhere : " and ";
}

std::string withCondition(std::string_view statement, std::string_view condition) {
  const auto grouping = std::min(statement.find(" group by "), statement.size());
  std::string sql(statement.substr(0, grouping));
  sql.append(conditionWord(statement)).append(condition);
  return sql.append(statement.substr(grouping));
}

}  // namespace tarlo::control
