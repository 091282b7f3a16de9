#include "compile/definition.h"

#include <array>

#include "compile/clauses.h"
#include "compile/grammar.h"
#include "text/pieces.h"

namespace tarlo::compile {
namespace {

// What the compilers have made. A part that a scheme has not stays empty.
struct Compiled {
  ClauseSet clauses;
  std::string computed;  // select items
  std::string filter;    // conditions, marked items not yet merged
  std::string grouping;  // with its own leading " group by "
};

// Filter text of blanks is still wrapped: the test is against empty text.
std::string statementOf(const Compiled& parts) {
  const std::string merged = mergedFilter(parts.filter, parts.clauses.where);
  std::string sql;
  sql.reserve(parts.clauses.select.size() + parts.clauses.from.size() + parts.clauses.where.size() +
              parts.computed.size() + merged.size() + parts.grouping.size() + 32);
  sql.append("select ").append(parts.clauses.select);
  if (!text::trim(parts.computed).empty()) sql.append(",").append(parts.computed);
  sql.append(" from ").append(parts.clauses.from);
  sql.append(" where ").append(parts.clauses.where);
  if (!merged.empty()) sql.append(" and (").append(merged).append(")");
  sql.append(parts.grouping);
  return sql;
}

}  // namespace

Parts partsOf(const Definition& definition) {
  return {!definition.computed.empty(), !definition.filter.empty(), !definition.statistics.empty()};
}

std::string_view operationFor(const Definition& definition) {
  // The index has a bit for each part: 4 statistics, 2 computed fields, 1 filter.
  constexpr std::array<std::string_view, 8> kNames = {
      "getQuery_None", "getQuery_Fil",     "getQuery_Vir",     "getQuery_Vir_Fil",
      "getQuery_Sta",  "getQuery_Fil_Sta", "getQuery_Vir_Sta", "getQuery_Vir_Fil_Sta"};
  const Parts parts = partsOf(definition);
  return kNames[(parts.statistics ? 4u : 0u) | (parts.computed ? 2u : 0u) |
                (parts.filter ? 1u : 0u)];
}

void loadFor(DictionaryReader& dictionary, const Definition& definition, Columns columns) {
  std::vector<std::string_view> fields;
  const ComputedFields computed(definition.computed);
  for (const std::string_view item : computed.items()) {
    for (const ExpressionToken& token : expressionTokens(computedExpression(item))) {
      if (token.reference) fields.push_back(*token.reference);
    }
  }
  for (const Condition& condition : conditionsOf(definition.filter)) {
    if (condition.parts().empty()) continue;
    fields.push_back(condition.field());
    if (const auto via = condition.via()) fields.push_back(*via);
  }
  for (const Statistic& item : statisticsOf(definition.statistics)) {
    if (!item.parts().empty()) fields.push_back(item.token());
  }
  for (const std::string_view token : groupingTokens(definition.grouping)) fields.push_back(token);
  dictionary.load({.mainTable = definition.mainTable,
                   .relations = definition.relations,
                   .fields = std::move(fields),
                   .wholeTables = columns == Columns::All});
}

std::string compileDefinition(Page& page, const Definition& definition) {
  return compileParts(page, definition, partsOf(definition));
}

std::string compileParts(Page& page, const Definition& definition, Parts parts) {
  DictionaryReader dictionary(page);
  loadFor(dictionary, definition, parts.statistics ? Columns::Named : Columns::All);
  const ComputedFields computed(parts.computed ? definition.computed : std::string_view());
  Compiled compiled;
  if (parts.statistics) {
    compiled.clauses = statisticsClauses(dictionary, definition, computed);
  } else {
    compiled.clauses = fieldListClauses(dictionary, definition.mainTable, definition.relations);
    if (parts.computed) compiled.computed = computedItems(dictionary, computed);
  }
  if (parts.filter && !parts.computed) compiled.filter = plainFilter(dictionary, definition.filter);
  if (parts.statistics) {
    compiled.grouping = parts.computed
                            ? groupByWithComputed(dictionary, definition.grouping, computed)
                            : groupBy(dictionary, definition.grouping);
  }
  if (parts.filter && parts.computed) {
    compiled.filter = filterWithComputed(dictionary, definition.filter, computed);
  }
  return statementOf(compiled);
}

}  // namespace tarlo::compile
