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

std::string compileDefinition(Page& page, const Definition& definition) {
  return compileParts(page, definition, partsOf(definition));
}

std::string compileParts(Page& page, const Definition& definition, Parts parts) {
  const ComputedFields computed(parts.computed ? definition.computed : std::string_view());
  Compiled compiled;
  if (parts.statistics) {
    compiled.clauses = statisticsClauses(page, definition, computed);
  } else {
    compiled.clauses = fieldListClauses(page, definition.mainTable, definition.relations);
    if (parts.computed) compiled.computed = computedItems(page, computed);
  }
  if (parts.filter && !parts.computed) compiled.filter = plainFilter(page, definition.filter);
  if (parts.statistics) {
    compiled.grouping = parts.computed ? groupByWithComputed(page, definition.grouping, computed)
                                       : groupBy(page, definition.grouping);
  }
  if (parts.filter && parts.computed) {
    compiled.filter = filterWithComputed(page, definition.filter, computed);
  }
  return statementOf(compiled);
}

}  // namespace tarlo::compile
