#include "scheme/filter_fields.h"

#include <optional>

#include "metadata/operations.h"
#include "scheme/step_fields.h"
#include "services/data_sources.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using variant::spliced;

struct Field {
  std::string id;
  std::string name;
  std::string tableName;
};

// Nothing for a field that is not there.
std::optional<Array> fieldRow(Page& page, const Variant& id) {
  const Variant row = metadata::getFieldName_Query(page, id);
  if (!row.isArray()) return {};
  return row.array();
}

bool isEligible(const Array& field) {
  const bool isOrdinary = variant::equalsAsText(field.at(4, 0), "0");
  const bool isKey = variant::equalsAsText(field.at(6, 0), "1");
  return isOrdinary || isKey;
}

std::vector<Field> eligibleFields(Page& page, const std::string& table) {
  std::vector<Field> fields;
  const Variant ids = metadata::getAllFieldID_Query(page, Variant(table));
  if (!ids.isArray()) return fields;
  const Array& cells = ids.array();
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    const auto field = fieldRow(page, cells.at(0, row));
    if (!field || !isEligible(*field)) continue;
    fields.push_back(
        {spliced(cells.at(0, row)), spliced(field->at(3, 0)), spliced(field->at(1, 0))});
  }
  return fields;
}

// The tables that are reached more than once, each with "|" behind it. The list is searched as
// text, so that a table 12 is found in "112|" and then counts as reached twice: deliberate, since
// stored conditions name their via fields by it.
std::string repeatedTables(const std::vector<RelatedTable>& tables) {
  std::string repeated;
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const std::string mark = tables[i].table + "|";
    if (repeated.find(mark) != std::string::npos) continue;
    for (std::size_t later = i + 1; later < tables.size(); ++later) {
      if (tables[later].table == tables[i].table) repeated += mark;
    }
  }
  return repeated;
}

void addRelated(Page& page, const RelatedTable& related, bool isRepeated,
                services::OptionList& options) {
  std::string via;  // its display name and "*", for a table that is reached more than once
  std::string token;
  if (isRepeated) {
    if (const auto field = fieldRow(page, Variant(related.viaField))) {
      via = spliced(field->at(3, 0));
      token = "|" + related.viaField;
    }
  }
  for (const Field& field : eligibleFields(page, related.table)) {
    const std::string label =
        isRepeated ? via + "*" + field.name : "*" + field.tableName + "." + field.name;
    options.add(label, field.id + token);
  }
}

}  // namespace

std::string filterFields(Page& page, const std::string& mainTable, const Variant& relations,
                         const std::vector<std::string>& computed) {
  services::OptionList options;
  for (std::size_t k = 0; k < computed.size(); ++k) {
    options.add(computed[k], "-" + std::to_string(k + 1));
  }
  for (const Field& field : eligibleFields(page, mainTable)) options.add(field.name, field.id);
  const std::vector<RelatedTable> tables = relatedTables(page, mainTable, relations);
  const std::string repeated = repeatedTables(tables);
  for (const RelatedTable& related : tables) {
    const bool isRepeated = repeated.find(related.table + "|") != std::string::npos;
    addRelated(page, related, isRepeated, options);
  }
  return options.text();
}

}  // namespace tarlo::scheme
