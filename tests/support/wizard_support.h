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
  using PlatformDatabase::ask;
  void ask(std::initializer_list<std::pair<std::string_view, Variant>> values) {
    for (const auto& [key, value] : values) ask(key, value);
  }
};

}  // namespace tarlo::testing
