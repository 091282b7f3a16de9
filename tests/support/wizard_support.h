#pragma once
// A platform database whose dialogs and grids write what is done with them into the page.

#include "support/page_support.h"
#include "support/platform_database.h"

namespace tarlo::testing {

class WizardDatabase : public PlatformDatabase {
 public:
  WizardDatabase() {
    for (const auto& [progId, name] :
         {std::pair{"TarloTable.table", "grid"}, std::pair{"TarloDialog.WebDialog", "dialog"},
          std::pair{"TarloDialog.SingleDialog", "dialog"}}) {
      local().registerObject(
          progId, [this, name] { return std::make_shared<RecordingObject>(page(), name); });
    }
  }
};

}  // namespace tarlo::testing
