#include "tsql/catalogue.h"

#include "text/fold.h"

namespace tarlo::tsql {

int Table::find(std::string_view columnName) const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (text::equalsNoCase(columns[i].name, columnName)) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace tarlo::tsql
