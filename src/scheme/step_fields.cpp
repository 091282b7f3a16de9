#include "scheme/step_fields.h"

#include "metadata/operations.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::scheme {

using variant::spliced;

std::vector<RelatedTable> relatedTables(Page& page, const std::string& mainTable,
                                        const Variant& relations) {
  std::vector<RelatedTable> tables;
  const Variant rows = metadata::getRelationTable_Query(page, Variant(mainTable), relations);
  if (!rows.isArray()) return tables;
  const Array& cells = rows.array();
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    tables.push_back({spliced(cells.at(0, row)), spliced(cells.at(2, row))});
  }
  return tables;
}

std::vector<std::string> computedNames(std::string_view posted) {
  std::vector<std::string> names;
  for (const std::string_view item : text::split(posted, ";")) {
    names.emplace_back(item.substr(0, item.find(':')));
  }
  return names;
}

std::string unescaped(std::string_view posted) {
  return text::replace(text::replace(posted, "%25", "%"), "%2B", "+");
}

}  // namespace tarlo::scheme
