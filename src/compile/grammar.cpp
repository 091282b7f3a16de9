#include "compile/grammar.h"

#include <array>
#include <cmath>

#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/runtime_error.h"

namespace tarlo::compile {

std::string_view piece(const Pieces& pieces, std::size_t i) {
  if (i >= pieces.size()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  return pieces[i];
}

double number(std::string_view token) {
  return variant::toDouble(Variant(token));
}

ComputedFields::ComputedFields(std::string_view list) : items_(text::split(list, ";")) {}

std::string_view ComputedFields::item(double token) const {
  const std::int32_t index = variant::toInt32(Variant(std::abs(token) - 1));
  if (index < 0) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  return piece(items_, static_cast<std::size_t>(index));
}

std::string_view computedName(std::string_view item) {
  const std::size_t colon = item.find(':');
  if (colon == std::string_view::npos) throw RuntimeError(ErrorNumber::InvalidCall);
  return item.substr(0, colon);
}

std::string_view computedExpression(std::string_view item) {
  const std::size_t colon = item.find(':');
  return colon == std::string_view::npos ? item : item.substr(colon + 1);
}

std::vector<ExpressionToken> expressionTokens(std::string_view expression) {
  std::vector<ExpressionToken> tokens;
  for (std::string_view text : text::split(expression, "]")) {
    const Pieces pieces = text::split(text, "[");
    ExpressionToken token{text, pieces.empty() ? std::string_view() : pieces[0], std::nullopt};
    if (pieces.size() > 1) token.reference = pieces[1];
    tokens.push_back(token);
  }
  return tokens;
}

Pieces filterItems(std::string_view filter) {
  return text::split(filter, text::kPartMark);
}

Pieces statisticsItems(std::string_view statistics) {
  return text::split(statistics, text::kPartMark);
}

Condition::Condition(std::string_view text) : parts_(text::split(text, ",")) {}

std::string_view Condition::field() const {
  return token().substr(0, token().find('|'));
}

std::optional<std::string_view> Condition::via() const {
  const std::size_t bar = token().find('|');
  if (bar == std::string_view::npos) return std::nullopt;
  return token().substr(bar + 1);
}

std::vector<Condition> conditionsOf(std::string_view filter) {
  std::vector<Condition> conditions;
  for (std::string_view text : filterItems(filter)) conditions.emplace_back(text);
  return conditions;
}

Statistic::Statistic(std::string_view text) : parts_(text::split(text, ",")) {}

std::vector<Statistic> statisticsOf(std::string_view statistics) {
  std::vector<Statistic> items;
  for (std::string_view text : statisticsItems(statistics)) items.emplace_back(text);
  return items;
}

std::optional<std::string_view> comparisonOperator(std::string_view code) {
  const double value = number(code);
  for (std::size_t i = 0; i < kComparisonOperators.size(); ++i) {
    if (value == static_cast<double>(i + 1)) return kComparisonOperators[i];
  }
  return std::nullopt;
}

bool isExpressionValue(std::string_view value) {
  return value.find('(') != std::string_view::npos && value.find(')') != std::string_view::npos;
}

std::optional<std::string_view> statisticsFunction(std::string_view code) {
  static constexpr std::array<std::string_view, 6> kFunctions = {"MAX", "MIN",   "AVG",
                                                                 "SUM", "COUNT", ""};
  if (code.size() != 1 || code[0] < '1' || code[0] > '6') return std::nullopt;
  return kFunctions[static_cast<std::size_t>(code[0] - '1')];
}

}  // namespace tarlo::compile
