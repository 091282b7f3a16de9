#include "compile/statistics.h"

#include <string>
#include <string_view>

#include "compile/clause_set.h"
#include "compile/expression.h"
#include "compile/grammar.h"
#include "compile/grouping.h"
#include "metadata/dictionary_lookups.h"
#include "metadata/relation_table.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::compile {
namespace {

using variant::spliced;

// Where a table inclusion comes from: it decides the blank in front of the join, and a statistics
// item's field alone leaves the join out when the main table's field is gone.
enum class Origin { Expression, StatisticsField, GroupingField };

class Statistics {
 public:
  Statistics(Page& page, const Variant& mainTable, const Variant& rel);

  void addItem(std::string_view token, std::string_view function, std::string_view computed);
  // A grouping field takes its tables in, and stands in the select list only as an item of its own.
  void addGrouping(std::string_view token, std::string_view computed);
  ClauseSet take();

 private:
  void include(std::string_view table, std::string_view tableId, Origin origin);
  void findRelation(std::string_view tableId);
  std::string resolved(std::string_view expression);

  Page& page_;
  ClauseSet clauses_;
  std::string mainTable_;
  Variant relations_;
  Variant farField_;  // keep the values of the last table included when no relation matches
  Variant nearField_;
};

Statistics::Statistics(Page& page, const Variant& mainTable, const Variant& rel) : page_(page) {
  const Variant names = metadata::getTableName_Query(page, mainTable);
  if (names.isArray()) {
    mainTable_ = spliced(names.array().at(0, 0));
    clauses_.from = "[" + mainTable_ + "],";
    clauses_.where = "[" + mainTable_ + "].[Zembra_Flag]=1 and ";
  }
  relations_ = metadata::getRelationTable_Query(page, mainTable, rel);
}

// The first row wins, whether it is a direct or a two-hop one.
void Statistics::findRelation(std::string_view tableId) {
  if (!relations_.isArray()) return;
  const Array& rows = relations_.array();
  for (std::ptrdiff_t row = 0; row <= rows.upperBound(2); ++row) {
    if (spliced(rows.at(0, row)) != tableId) continue;
    farField_ = rows.at(1, row);
    nearField_ = rows.at(2, row);
    return;
  }
}

// Deliberate: the search is for the bare name, so a table whose name is part of one that is there
// already counts as present and gets no join.
void Statistics::include(std::string_view table, std::string_view tableId, Origin origin) {
  if (clauses_.from.find(table) != std::string::npos) return;
  clauses_.from.append(table).append(",");
  if (table == mainTable_) return;
  findRelation(tableId);
  const Variant far = metadata::getFieldName_Query(page_, farField_);
  const std::string farColumn = spliced(far.array().at(2, 0));
  const std::string farTable = spliced(far.array().at(0, 0));
  const Variant near = metadata::getFieldName_Query(page_, nearField_);
  if (origin == Origin::StatisticsField && !near.isArray()) return;
  const std::string nearColumn = spliced(near.array().at(2, 0));
  clauses_.where += (origin == Origin::Expression ? "[" : " [") + mainTable_ + "].[" + nearColumn +
                    "]=[" + farTable + "].[" + farColumn + "] and ";
}

// The expression with its references resolved; their tables are taken in.
std::string Statistics::resolved(std::string_view expression) {
  std::string text;
  appendExpression(text, expression, BlankTokens::Drop, [&](std::string_view id) {
    const Variant rows = referenceStatement(page_, id);
    const auto names = namesOf(rows);
    if (names) include(names->table, spliced(rows.array().at(2, 0)), Origin::Expression);
    return names;
  });
  return text;
}

void Statistics::addItem(std::string_view token, std::string_view function,
                         std::string_view computed) {
  const double value = number(token);
  if (!(value > 0)) {
    const std::string_view item = computedItem(computed, value);
    const std::string_view name = computedName(item);
    const std::string expression = resolved(computedExpression(item));
    clauses_.select.append(function).append("(").append(expression);
    clauses_.select.append(") as [").append(name).append("],");
    return;
  }
  const Variant rows = fieldStatement(page_, token);
  if (rows.isArray()) {
    const Array& row = rows.array();
    clauses_.select.append(function).append("(");
    appendReference(clauses_.select, *namesOf(rows));
    clauses_.select.append(") as [").append(spliced(row.at(2, 0))).append(".");
    clauses_.select.append(spliced(row.at(3, 0))).append("],");
  }
  // Not under the test above: an unknown field is error 13 here.
  include(spliced(rows.array().at(0, 0)), spliced(rows.array().at(4, 0)), Origin::StatisticsField);
}

void Statistics::addGrouping(std::string_view token, std::string_view computed) {
  const double value = number(token);
  if (!(value > 0)) {
    resolved(computedExpression(computedItem(computed, value)));
    return;
  }
  const Variant rows = fieldStatement(page_, token);
  include(spliced(rows.array().at(0, 0)), spliced(rows.array().at(4, 0)), Origin::GroupingField);
}

ClauseSet Statistics::take() {
  cutSuffix(clauses_.select, ",");
  cutSuffix(clauses_.from, ",");
  cutSuffix(clauses_.where, " and ");
  return std::move(clauses_);
}

}  // namespace

Variant Query_getStats(Page& page, const Variant& sTable, const Variant& stats,
                       const Variant& computed, const Variant& group, const Variant& rel) {
  const std::string items = variant::toText(stats);
  const std::string fields = variant::spliced(computed);
  Statistics statistics(page, sTable, rel);
  std::string_view function;  // an unknown code leaves the function of the item before
  for (std::string_view item : text::split(items, "|||")) {
    const Pieces parts = text::split(item, ",");
    function = statisticsFunction(piece(parts, 1)).value_or(function);
    statistics.addItem(parts[0], function, fields);
  }
  const std::string grouping = trimmedGrouping(group);
  for (std::string_view token : text::split(grouping, ",")) {
    statistics.addGrouping(token, fields);
  }
  return toVariant(statistics.take());
}

}  // namespace tarlo::compile
