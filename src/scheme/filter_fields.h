#pragma once
// The fields that a condition can be about, as the options of a combo box.

#include <string>
#include <vector>

#include "frame/page.h"

namespace tarlo::scheme {

// Computed fields by -<position>, the main table's fields by id, those of related tables by id, or
// by `<id>|<via field id>` where a table is reached over more than one relation: the via field then
// says which. Ordinary fields and key fields are offered. Every option has the separator behind it.
std::string filterFields(Page& page, const std::string& mainTable, const Variant& relations,
                         const std::vector<std::string>& computed);

}  // namespace tarlo::scheme
