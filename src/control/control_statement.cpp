#include "control/control_statement.h"

#include <algorithm>

#include "metadata/stored_schemes.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"
#include "variant/text.h"

namespace tarlo::control {
namespace {

constexpr std::string_view kWhere = " where ";

// Nothing for a scheme that has none, and when it cannot be read.
std::optional<std::string> statementOf(Page& page, std::string_view scheme) {
  ErrorState err;
  return err.value([&] { return metadata::storedStatement(page, scheme); });
}

// The first word of a statement's conditions that names both tables; "" when none does.
std::string joinOf(std::string_view conditions, std::string_view first, std::string_view second) {
  if (conditions.empty()) return {};
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
  const auto statement = statementOf(page, scheme);
  const auto where = statement ? statement->find(kWhere) : std::string::npos;
  if (where == std::string::npos) return sql;
  sql.append(first).append(",").append(second);
  const std::string join =
      joinOf(std::string_view(*statement).substr(where + kWhere.size()), first, second);
  if (!join.empty()) sql.append(kWhere).append(join);
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

std::string textAt(const std::optional<std::vector<std::string>>& columns,
                   std::string_view number) {
  if (!columns) throw RuntimeError(ErrorNumber::TypeMismatch, "the scheme's columns");
  const std::int32_t at = variant::toInt32(Variant(number));
  if (at == 0) return {};
  const auto index = static_cast<std::size_t>(at) - 1;
  if (at < 0 || index >= columns->size()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  return (*columns)[index];
}

SchemeColumns::SchemeColumns(Page& page, std::string_view scheme)
    : titles_(metadata::columnTitles(page, scheme)),
      expressions_(metadata::columnExpressions(page, scheme)) {}

std::string SchemeColumns::selectItem(std::string_view number) const {
  return text::joined({",", textAt(expressions_, number), " as [", textAt(titles_, number), "]"});
}

std::string fromPart(Page& page, std::string_view scheme) {
  const auto statement = statementOf(page, scheme);
  if (!statement) throw RuntimeError(ErrorNumber::InvalidUseOfNull);
  const auto from = statement->find(" from ");
  return from == std::string::npos ? *statement : statement->substr(from);
}

}  // namespace tarlo::control
