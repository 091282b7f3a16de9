#pragma once
// What the steps behind the relations offer to choose from: related tables, and the computed fields
// that the wizard hands on in its addresses.

#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"

namespace tarlo::scheme {

// One way from the main table to another, by a selected relation.
struct RelatedTable {
  std::string table;
  std::string viaField;  // the main table's field of the relation
};

// In the order of getRelationTable_Query; a table that is reached twice comes twice. Never raises.
std::vector<RelatedTable> relatedTables(Page& page, const std::string& mainTable,
                                        const Variant& relations);

// Names of the computed fields of a posted list, in order: the text of each item up to its first
// ":", the whole of an item without one. The field at index k has the token -(k + 1).
std::vector<std::string> computedNames(std::string_view posted);

// `%25` and `%2B` as the characters that they stand for, in this order.
std::string unescaped(std::string_view posted);

}  // namespace tarlo::scheme
