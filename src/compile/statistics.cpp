#include <string>
#include <string_view>
#include <vector>

#include "compile/clauses.h"
#include "compile/references.h"
#include "metadata/dictionary.h"
#include "text/pieces.h"
#include "variant/runtime_error.h"

namespace tarlo::compile {
namespace {

// Where a table inclusion comes from: it decides the blank in front of the join, and a statistics
// item's field alone leaves the join out when the main table's field is gone.
enum class Origin { Expression, StatisticsField, GroupingField };

// What resolves to nothing where a name is wanted.
template <class Value>
const Value& required(const std::optional<Value>& value) {
  if (!value) throw RuntimeError(ErrorNumber::TypeMismatch);
  return *value;
}

class Statistics {
 public:
  Statistics(DictionaryReader& dictionary, const Definition& definition,
             const ComputedFields& computed);

  void addItem(std::string_view token, std::string_view function);
  // A grouping field takes its tables in, and stands in the select list only as an item of its own.
  void addGrouping(std::string_view token);
  ClauseSet take();

 private:
  void include(const Reference& reference, Origin origin);
  void findPath(std::string_view tableId);
  std::string resolved(std::string_view expression);

  DictionaryReader& dictionary_;
  const ComputedFields& computed_;
  ClauseSet clauses_;
  std::string mainTable_;
  std::vector<metadata::Path> paths_;
  std::string farField_;  // keep the values of the last table included when no path matches
  std::string nearField_;
};

Statistics::Statistics(DictionaryReader& dictionary, const Definition& definition,
                       const ComputedFields& computed)
    : dictionary_(dictionary), computed_(computed) {
  if (const auto names = dictionary.tableNames(definition.mainTable)) {
    mainTable_ = names->name;
    clauses_.from = "[" + mainTable_ + "],";
    clauses_.where = "[" + mainTable_ + "].[Zembra_Flag]=1 and ";
  }
  paths_ = dictionary.paths(definition.mainTable, definition.relations);
}

// The first path wins, whether it is a direct or a two-hop one.
void Statistics::findPath(std::string_view tableId) {
  for (const metadata::Path& path : paths_) {
    if (path.table != tableId) continue;
    farField_ = path.field;
    nearField_ = path.mainField;
    return;
  }
}

// Deliberate: the search is for the bare name, so a table whose name is part of one that is there
// already counts as present and gets no join.
void Statistics::include(const Reference& reference, Origin origin) {
  if (clauses_.from.find(reference.table) != std::string::npos) return;
  clauses_.from.append(reference.table).append(",");
  if (reference.table == mainTable_) return;
  findPath(reference.tableId);
  const auto far = dictionary_.fieldNames(farField_);
  required(far);
  const auto near = dictionary_.fieldNames(nearField_);
  if (origin == Origin::StatisticsField && !near) return;
  clauses_.where += (origin == Origin::Expression ? "[" : " [") + mainTable_ + "].[" +
                    required(near).column + "]=[" + far->table + "].[" + far->column + "] and ";
}

// The expression with its references resolved; their tables are taken in.
std::string Statistics::resolved(std::string_view expression) {
  std::string text;
  appendExpression(text, expression, BlankTokens::Drop, [&](std::string_view id) {
    const auto reference = includedReference(dictionary_, id);
    if (reference) include(*reference, Origin::Expression);
    return reference;
  });
  return text;
}

void Statistics::addItem(std::string_view token, std::string_view function) {
  const double value = number(token);
  if (!(value > 0)) {
    const std::string_view item = computed_.item(value);
    const std::string_view name = computedName(item);
    const std::string expression = resolved(computedExpression(item));
    clauses_.select.append(function).append("(").append(expression);
    clauses_.select.append(") as [").append(name).append("],");
    return;
  }
  const auto field = statisticsField(dictionary_, token);
  include(required(field), Origin::StatisticsField);
  clauses_.select.append(function).append("(");
  appendReference(clauses_.select, *field);
  clauses_.select.append(") as [").append(field->tableDisplay).append(".");
  clauses_.select.append(field->display).append("],");
}

void Statistics::addGrouping(std::string_view token) {
  const double value = number(token);
  if (!(value > 0)) {
    resolved(computedExpression(computed_.item(value)));
    return;
  }
  include(required(statisticsField(dictionary_, token)), Origin::GroupingField);
}

ClauseSet Statistics::take() {
  cutSuffix(clauses_.select, ",");
  cutSuffix(clauses_.from, ",");
  cutSuffix(clauses_.where, " and ");
  return std::move(clauses_);
}

}  // namespace

ClauseSet statisticsClauses(DictionaryReader& dictionary, const Definition& definition,
                            const ComputedFields& computed) {
  Statistics statistics(dictionary, definition, computed);
  std::string_view function;  // an unknown code leaves the function of the item before
  for (const Statistic& item : statisticsOf(definition.statistics)) {
    function = statisticsFunction(item.code()).value_or(function);
    statistics.addItem(item.token(), function);
  }
  for (std::string_view token : groupingTokens(definition.grouping)) {
    statistics.addGrouping(token);
  }
  return statistics.take();
}

}  // namespace tarlo::compile
