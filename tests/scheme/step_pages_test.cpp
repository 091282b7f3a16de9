// The steps of computed fields, filter and statistics: what they offer and what they restore.

#include <gtest/gtest.h>

#include "scheme/operations.h"
#include "scheme/step_fields.h"
#include "support/golden_page.h"
#include "support/wizard_support.h"

namespace tarlo::scheme {
namespace {

using namespace tarlo::testing;

void askFor(WizardDatabase& data, const std::string& scheme = "") {
  data.ask({{"sTable", "10"}, {"multi", "5,6,7"}});
  if (scheme.empty()) return;
  data.ask({{"type", "1"}, {"prikeyid", scheme}});
}

TEST(StepFields, NamesOfPostedComputedFields) {
  EXPECT_EQ(computedNames(""), std::vector<std::string>{});
  EXPECT_EQ(computedNames("a:1;b:2:3;c"), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(unescaped("a%2525b%2B"), "a%25b+");
}

TEST(ComputedStep, OffersFieldsAndAnEmptyList) {
  WizardDatabase data;
  askFor(data);
  data.ask("gostep", "3");
  const std::string page = data.writtenBy([&] { addSearchDlg2(data.page()); });
  expectGolden("computed_step.html", between(page, "<html", "function getCursorPos"));
  EXPECT_TRUE(holds(page, "addsearchdlg&step=1_1&gostep=3&sTable=10';"));
}

TEST(ComputedStep, RestoresReferencesAndDropsThoseThatAreGone) {
  const std::pair<std::string, std::string> rows[] = {
      {"N:[101]*2", "N:[Order.Sum|101]*2;"},
      {"N:1+[111]-[120]", "N:1+[Client.Town|111]-[Area.Key|120];"},
      {"a:[999]*2+[101];b:YEAR(GETDATE())", "a:[Order.Sum|101];b:YEAR(GETDATE());"},
      {"a:x:y", "a:x:y;"},
      {"a:CASE ''q'' END", "a:CASE \\'q\\' END;"},
      {"a:[101]]b[101", "a:[Order.Sum|101]101;"},
      {"", ""},
  };
  for (const auto& [stored, list] : rows) {
    WizardDatabase data;
    askFor(data, data.addScheme("s", "Query_Vir", "'" + stored + "'"));
    const std::string page = data.writtenBy([&] { addSearchDlg2(data.page()); });
    EXPECT_EQ(between(page, "var divHTML='", "';\r\n"), "var divHTML='" + list) << stored;
  }
}

using FilterStep = tarlo::testing::On<WizardDatabase>;

TEST_F(FilterStep, FieldsOfTablesReachedOnceAndTwice) {
  EXPECT_EQ(
      filterFields(data.page(), "10", "5", {"N"}),
      "N<<<<<<-1>>>>>>Key<<<<<<100>>>>>>Sum<<<<<<101>>>>>>Cust<<<<<<102>>>>>>Ship<<<<<<103>>>>>>"
      "*Client.Key<<<<<<110>>>>>>*Client.Town<<<<<<111>>>>>>");
  EXPECT_TRUE(holds(filterFields(data.page(), "10", "5,6", {}),
                    "Cust*Town<<<<<<111|102>>>>>>Ship*Key<<<<<<110|103>>>>>>"));
  // A kind that is neither ordinary nor the key is left out, and so is none at all; a via field
  // that is gone leaves the bare label and token.
  data.execute("update Zembra_DataDict_Field set DDF_Type=12 where Zembra_ID=111");
  data.execute("update Zembra_DataDict_Field set Zembra_Flag=0 where Zembra_ID=103");
  const std::string fields = filterFields(data.page(), "10", "5,6", {});
  EXPECT_FALSE(holds(fields, "Town"));
  EXPECT_TRUE(holds(fields, "Cust*Key<<<<<<110|102>>>>>>*Key<<<<<<110>>>>>>"));
  data.execute("update Zembra_DataDict_Field set DDF_Type=null where Zembra_ID=101");
  EXPECT_FALSE(holds(filterFields(data.page(), "10", "5", {}), "Sum"));
}

TEST_F(FilterStep, RowsOfANewAndOfAStoredFilter) {
  askFor(data, data.addScheme("s", "Query_Rel", "'101,1,5\"0,and|||111|102,7,Paris'"));
  data.ask("virtual", "N:[Order.Sum|101]%252");
  expectGolden("filter_step.html",
               between(data.writtenBy([&] { addSearchDlg3(data.page()); }), "<html", "function"));

  struct Row {
    std::string stored;
    std::string script;
    int rows;
  };
  for (const Row& row : {Row{"''", "selectIndex=0;\r\nselectIndex=1;\r\nvar", 2},
                         Row{"null", "selectIndex=0;\r\nselectIndex=1;\r\nvar", 2}}) {
    WizardDatabase other;
    askFor(other, other.addScheme("s", "Query_Rel", row.stored));
    const std::string page = other.writtenBy([&] { addSearchDlg3(other.page()); });
    EXPECT_TRUE(holds(page, row.script)) << row.stored;
  }
  // A scheme that is deleted has no row, not even an empty one.
  data.execute("update Zembra_Query_Main set Zembra_Flag=0");
  const std::string page = data.writtenBy([&] { addSearchDlg3(data.page()); });
  EXPECT_TRUE(holds(page, "overflow:auto\">\r\n</div>"));
}

TEST(StatisticsStep, OffersOrdinaryFieldsAndRestores) {
  WizardDatabase data;
  askFor(data, data.addScheme("s", "Query_Static,Query_Group,Query_Vir",
                              "'101,4|||-1,1|||-9,6|||999,5','102,-1,','N:1;O:2'"));
  data.ask("virtual", "N:1;O:2");
  expectGolden("statistics_step.html", data.writtenBy([&] { addSearchDlg4(data.page()); }));
}

TEST(StatisticsStep, GroupingAndEscapesOfStoredSchemes) {
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"", "", "</script>"},
      {"", "102",
       "    document.all(\"groupby\").selectvalue=102;\r\n"
       "    document.all(\"groupby\").value=102;\r\n</script>"},
      {"''x'',1", "", "StatsRecord='\\\\\\'x\\\\\\',1|||';\r\n"},
  };
  for (const auto& [statistics, grouping, script] : rows) {
    WizardDatabase data;
    askFor(data, data.addScheme("s", "Query_Static,Query_Group",
                                "'" + statistics + "','" + grouping + "'"));
    const std::string page = data.writtenBy([&] { addSearchDlg4(data.page()); });
    EXPECT_TRUE(holds(page, script)) << statistics << grouping;
  }
}

TEST(StatisticsStep, AComputedNameWithAQuoteLeavesNoList) {
  WizardDatabase data;
  askFor(data);
  data.ask("virtual", "it's:1");
  const std::string page = data.writtenBy([&] { addSearchDlg4(data.page()); });
  EXPECT_TRUE(holds(page, "editable=\"false\" src=\"\""));
}

TEST(StatisticsStep, TheFifthPageIsAnOpeningOnly) {
  WizardDatabase data;
  const std::string page = data.writtenBy([&] { addSearchDlg5(data.page()); });
  EXPECT_TRUE(page.starts_with("<html xmlns:tarlo"));
  EXPECT_TRUE(page.ends_with("</head>\r\n"));
}

}  // namespace
}  // namespace tarlo::scheme
