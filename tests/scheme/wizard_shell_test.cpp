#include "scheme/operations.h"

#include <gtest/gtest.h>

#include "support/golden_page.h"
#include "support/wizard_support.h"

namespace tarlo::scheme {
namespace {

using tarlo::testing::expectGolden;
using tarlo::testing::holds;
using tarlo::testing::WizardDatabase;

std::string shell(WizardDatabase& data) {
  return data.writtenBy([&] { addSearchDlg(data.page()); });
}

TEST(WizardShell, SetsUpTheDialogInOrder) {
  WizardDatabase data;
  data.execute(
      "insert into Zembra_Functions (Func_MenuID,Func_Action) values (101,'addSearchDlg')");
  data.execute(
      "insert into Zembra_SubHelp (SubHelp_FuncID,SubHelp_title,SubHelp_popup) values (1,'T',"
      "'one' + CHAR(13) + CHAR(10) + CHAR(13) + CHAR(10) + 'two')");
  expectGolden("wizard_new.html", shell(data));
}

TEST(WizardShell, AChangedSchemePresetsTheFirstStep) {
  WizardDatabase data;
  data.ask("type", "1");
  data.ask("prikeyid", data.addScheme("s", "Query_MultiRel", "1"));
  expectGolden("wizard_change.html", data.writtenBy([&] { modisearchdlg(data.page()); }));
}

TEST(WizardShell, OnlyZeroIsSingleLevel) {
  for (const auto& [stored, isMultiLevel] :
       {std::pair{"0", false}, std::pair{"1", true}, std::pair{"null", true}}) {
    WizardDatabase data;
    data.ask("type", 1);
    data.ask("prikeyid", data.addScheme("s", "Query_MultiRel", stored));
    const std::string page = shell(data);
    EXPECT_EQ(holds(page, "value=\"1\" checked"), isMultiLevel) << stored;
    EXPECT_EQ(holds(page, "value=\"0\" checked"), !isMultiLevel) << stored;
  }
}

TEST(WizardShell, ASchemeThatIsNotThereGivesEmptyPresets) {
  WizardDatabase data;
  data.ask("type", "1");
  data.ask("prikeyid", "999");
  const std::string page = shell(data);
  EXPECT_TRUE(holds(page, "beginvalue=\"-1\" selectvalue=\"\""));
  EXPECT_TRUE(holds(page, "value=\"0\" checked"));
}

TEST(WizardShell, AHostileIdEndsNeitherScriptNorAttribute) {
  WizardDatabase data;
  data.ask("type", "1");
  data.ask("prikeyid", "1'\"</script><b>");
  const std::string page = shell(data);
  EXPECT_FALSE(holds(page, "1'\"</script>"));
  EXPECT_TRUE(holds(page, "&prikeyid=1%27%22%3C/script%3E%3Cb%3E&sTable"));
}

}  // namespace
}  // namespace tarlo::scheme
