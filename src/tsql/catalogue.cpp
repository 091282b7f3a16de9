#include "tsql/catalogue.h"

#include "tsql/resolve/same_name.h"

namespace tarlo::tsql {

int Table::find(std::string_view columnName) const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (sameName(columns[i].name, columnName)) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace tarlo::tsql
