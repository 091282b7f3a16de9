#include "siblings/siblings.h"

#include "siblings/cascade_operations.h"
#include "siblings/grid_operations.h"
#include "siblings/menu.h"
#include "siblings/scheme_state.h"
#include "siblings/single_dialog.h"
#include "siblings/table.h"
#include "siblings/web_dialog.h"

namespace tarlo::siblings {
namespace {

constexpr ProgId kProgIds[] = {
    {"TarloTable.table", makeTable},
    {"Tarlo.menu", makeMenu},
    {"TarloDialog.WebDialog", makeWebDialog},
    {"TarloDialog.SingleDialog", makeSingleDialog},
};

constexpr PageOperation kPageOperations[] = {
    {"TarloTable", "rows", sendGridRows},
    {"TarloTable", "csv", sendGridCsv},
    {"TarloRelation", "options", sendCascadeOptions},
    {"TarloDialog", "schemeState", sendSchemeState, true},
};

}  // namespace

std::span<const ProgId> progIds() {
  return kProgIds;
}

std::span<const PageOperation> pageOperations() {
  return kPageOperations;
}

}  // namespace tarlo::siblings
