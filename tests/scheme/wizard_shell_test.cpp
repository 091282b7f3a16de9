#include "scheme/operations.h"

#include <gtest/gtest.h>

#include "support/golden_page.h"
#include "support/wizard_support.h"
#include "text/pieces.h"

namespace tarlo::scheme {
namespace {

using namespace tarlo::testing;

std::string shell(WizardDatabase& data) {
  return data.writtenBy([&] { addSearchDlg(data.page()); });
}

// The lines of a page that the other one does not have.
std::string linesBeyond(const std::string& page, const std::string& other) {
  const std::string known = "\n" + other;
  std::string lines;
  for (const std::string_view line : text::split(page, "\r\n")) {
    if (!holds(known, text::joined({"\n", line, "\r\n"}))) lines.append(line).append("\r\n");
  }
  return lines;
}

// Without the functions of the shell's script: what differs from page to page is where they go.
std::string withoutFunctions(const std::string& page) {
  const std::string script = between(page, "<script>", "</script>");
  std::string addresses;
  for (const std::string_view line : text::split(script, "\r\n")) {
    if (holds(line, "sTable=")) addresses.append(line).append("\r\n");
  }
  return text::replace(page, script, addresses);
}

TEST(WizardShell, SetsUpTheDialogInOrder) {
  WizardDatabase data;
  data.execute(
      "insert into Zembra_Functions (Func_MenuID,Func_Action) values (101,'addSearchDlg')");
  data.execute(
      "insert into Zembra_SubHelp (SubHelp_FuncID,SubHelp_title,SubHelp_popup) values (1,'T',"
      "'one' + CHAR(13) + CHAR(10) + CHAR(13) + CHAR(10) + 'two')");
  expectGolden("wizard_new.html", withoutFunctions(shell(data)));
}

TEST(WizardShell, AChangedSchemePresetsTheFirstStep) {
  WizardDatabase data;
  const std::string unchanged = shell(data);
  data.ask({{"type", "1"}, {"prikeyid", data.addScheme("s", "Query_MultiRel", "1")}});
  const std::string page = data.writtenBy([&] { modisearchdlg(data.page()); });
  expectGolden("wizard_change.html", linesBeyond(page, unchanged));
}

TEST(WizardShell, OnlyZeroIsSingleLevel) {
  for (const auto& [stored, isMultiLevel] :
       {std::pair{"0", false}, std::pair{"1", true}, std::pair{"null", true}}) {
    WizardDatabase data;
    data.ask({{"type", 1}, {"prikeyid", data.addScheme("s", "Query_MultiRel", stored)}});
    const std::string page = shell(data);
    EXPECT_EQ(holds(page, "value=\"1\" checked"), isMultiLevel) << stored;
    EXPECT_EQ(holds(page, "value=\"0\" checked"), !isMultiLevel) << stored;
  }
}

TEST(WizardShell, ASchemeThatIsNotThereGivesEmptyPresets) {
  WizardDatabase data;
  data.ask({{"type", "1"}, {"prikeyid", "999"}});
  const std::string page = shell(data);
  EXPECT_TRUE(holds(page, "beginvalue=\"-1\" selectvalue=\"\""));
  EXPECT_TRUE(holds(page, "value=\"0\" checked"));
}

TEST(WizardShell, AHostileIdEndsNeitherScriptNorAttribute) {
  WizardDatabase data;
  data.ask({{"type", "1"}, {"prikeyid", "1'\"</script><b>"}});
  const std::string page = shell(data);
  EXPECT_FALSE(holds(page, "1'\"</script>"));
  EXPECT_TRUE(holds(page, "&prikeyid=1%27%22%3C/script%3E%3Cb%3E&sTable"));
}

}  // namespace
}  // namespace tarlo::scheme
