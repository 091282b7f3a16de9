#pragma once
// What the wizard's steps have in common: what they offer to choose from, and what they are told in
// their addresses.

#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"

namespace tarlo::scheme {

// Whether the request is about a scheme that is there already, `prikeyid`.
bool isChange(Page& page);

// Names of the computed fields of a posted list, in order: the text of each item up to its first
// ":", the whole of an item without one. The field at index k has the token -(k + 1).
std::vector<std::string> computedNames(std::string_view posted);

// `%25` and `%2B` as the characters that they stand for, in this order.
std::string unescaped(std::string_view posted);

// The fields that a condition can be about, as the options of a combo box. Computed fields by
// -<position>, the main table's fields by id, those of related tables by id, or by
// `<id>|<via field id>` where a table is reached over more than one relation: the via field then
// says which. Ordinary fields and key fields are offered. Every option has the separator behind it.
std::string filterFields(Page& page, std::string_view mainTable, std::string_view relations,
                         const std::vector<std::string>& computed);

}  // namespace tarlo::scheme
