#include "siblings/siblings.h"

#include "siblings/components.h"
#include "siblings/page_operations.h"

namespace tarlo::siblings {
namespace {

constexpr ProgId kProgIds[] = {
    {"TarloTable.table", makeTable},
    {"Tarlo.menu", makeMenu},
    {"TarloDialog.WebDialog", makeWebDialog},
    {"TarloDialog.SingleDialog", makeSingleDialog},
};

using database::TableGroup;
using frame::Caller;
using frame::Manager;
using frame::SubAction;

// A list's rows are read by the rights, and for the users, of the page that drew it. A cascade's
// levels are those that pages offered, or of stored controls.
constexpr PageOperation kPageOperations[] = {
    {"TarloTable", "rows", sendGridRows, {Caller::SignedIn}, {}},
    {"TarloTable", "csv", sendGridCsv, {Caller::SignedIn}, {}},
    {"TarloRelation",
     "options",
     sendCascadeOptions,
     {Caller::SignedIn},
     {.reads = {TableGroup::Dictionary, TableGroup::Controls}, .writes = {}}},
    {"TarloDialog",
     "schemeState",
     sendSchemeState,
     frame::manages(Manager::Schemes, SubAction::Modify),
     {.reads = {TableGroup::Schemes, TableGroup::Organisation}, .writes = {}}},
};

}  // namespace

std::span<const ProgId> progIds() {
  return kProgIds;
}

std::span<const PageOperation> pageOperations() {
  return kPageOperations;
}

}  // namespace tarlo::siblings
