#include "siblings/siblings.h"

#include "siblings/grid_operations.h"
#include "siblings/menu.h"
#include "siblings/table.h"

namespace tarlo::siblings {
namespace {

constexpr ProgId kProgIds[] = {
    {"TarloTable.table", makeTable},
    {"Tarlo.menu", makeMenu},
};

constexpr PageOperation kPageOperations[] = {
    {"TarloTable", "rows", sendGridRows},
    {"TarloTable", "csv", sendGridCsv},
};

}  // namespace

std::span<const ProgId> progIds() {
  return kProgIds;
}

std::span<const PageOperation> pageOperations() {
  return kPageOperations;
}

}  // namespace tarlo::siblings
