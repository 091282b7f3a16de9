// Reduction, the preview's titles, and saving to the letter.

#include "scheme/save_scheme.h"

#include <gtest/gtest.h>

#include "scheme/operations.h"
#include "scheme/posted_definition.h"
#include "scheme/titles.h"
#include "support/golden_page.h"
#include "support/wizard_support.h"

namespace tarlo::scheme {
namespace {

using namespace tarlo::testing;

constexpr std::string_view kSaved =
    "<script>window.top.switchStep();top.dialogArguments.window.location.reload();</script>";

TEST(Reduction, KeepsIdsAndTakesEveryBarForAMark) {
  const std::pair<std::string, std::string> rows[] = {
      {"", ""},
      {"N:[*Order.Sum|101]-[Order.Cust|102]", "N:[101]-[102]"},
      {"a:1;b:2;", "a:1;b:2;"},  // an empty item goes in front of the one that is cut
      {"a:‘x’", "a:'x'"},
      {"a:p|q", "a:[q"},
      {"a:[abc]", "a:abc]"},
      {"a:[x|y|1]", "a:[y|1]"},
      {"a:x:[t|1]", "a:x:[1]"},
      {"a:", "a:"},
  };
  for (const auto& [posted, stored] : rows) EXPECT_EQ(reducedComputed(posted), stored) << posted;
}

TEST(Preview, TitlesOfASelectList) {
  using Titles = std::vector<std::string>;
  const std::pair<std::string, Titles> rows[] = {
      {"select [A].[B] as [T.F],X as y from [A]", {"T.F", "y"}},
      {"select ROUND(a,2) as [R] from [A]", {"R"}},
      {"select a as b as [c] from [A]", {"c"}},
      {"select a,b from [A]", {}},
      {"select", {}},
      {"", {}},
  };
  for (const auto& [statement, titles] : rows) EXPECT_EQ(titlesInList(statement), titles);
}

void post(WizardDatabase& data, const std::string& computed, const std::string& filter,
          const std::string& statistics) {
  data.ask({{"TableName", "10"},
            {"step0Multi", "5"},
            {"step1Virtual", computed},
            {"step2Rel", filter},
            {"step3Stats", statistics},
            {"step3Groupby", "102"},
            {"Mulrelation", "0"},
            {"step4Name", "it's"},
            {"step4Memo", "d'oh"},
            {"step4Sys", "1"},
            {"step4Dic", "1"}});
}

TEST(Preview, ListsTitlesOrRefuses) {
  WizardDatabase data;
  post(data, "", "", "");
  expectGolden("preview_fields.html", data.writtenBy([&] { previewSearchdlg(data.page()); }));
  post(data, "N:NOSUCH(1)", "", "");
  expectGolden("preview_refused.html", data.writtenBy([&] { previewSearchdlg(data.page()); }));
}

std::string save(WizardDatabase& data) {
  return data.writtenBy([&] { addSearch(data.page()); });
}

TEST(SaveScheme, RefusalsWriteNothing) {
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"step4Name", "  ", "<script>sAlert('查询方案名称不能为空,请输入一个名字！');</script>"},
      {"step4Name", "taken",
       "<script>top.sAlert('查询方案名称已存在,请使用另一个名字！');</script>"},
      {"step1Virtual", "N:1+", "<script>top.sAlert('查询方案数据错误',false);</script>"},
      {"Mulrelation", "", "<script>top.sAlert('查询方案保存时出错！' , false );</script>"},
  };
  for (const auto& [key, value, answer] : rows) {
    WizardDatabase data;
    data.addScheme("taken", "Zembra_Flag", "1");
    post(data, "", "", "");
    data.ask(key, value);
    EXPECT_EQ(save(data), answer) << key;
    EXPECT_EQ(data.rows("select count(*) from Zembra_Query_Main"), "1") << key;
  }
}

TEST(SaveScheme, NamesOfDeletedAndForeignRowsAreFree) {
  for (const std::string values : {"0,0", "1,1"}) {
    WizardDatabase data;
    data.addScheme("it''s", "Zembra_Flag,Query_IsDataAlert", values);
    post(data, "", "", "");
    EXPECT_EQ(save(data), kSaved) << values;
  }
}

TEST(SaveScheme, WritesANewSchemeWithoutStatistics) {
  WizardDatabase data;
  post(data, "N:[Order.Sum|101];O:‘2’", "101,1,1,-1", "|||");
  EXPECT_EQ(save(data), kSaved);
  EXPECT_EQ(data.rows("select Query_Name,Query_Desc,Query_Prikey,Query_System,Query_Dic,"
                      "Query_MainTBID,Query_Vir,Query_Rel,Query_Static,Query_Group,"
                      "Query_MultiRel,Query_MultiRelSel,Query_HasStatic,Zembra_User,Zembra_Flag "
                      "from Zembra_Query_Main"),
            "it's,d'oh,100,1,1,10,N:[101];O:'2',101,1,1,-1,,102,0,5,0,1,1");
  EXPECT_TRUE(holds(data.rows("select Query_Fields from Zembra_Query_Main"), "'2' as [O]"));
}

TEST(SaveScheme, StatisticsLeaveTheStoredRelationsAlone) {
  WizardDatabase data;
  const std::string id = data.addScheme("s", "Query_MultiRel,Query_MultiRelSel", "1,'6'");
  post(data, "", "", "102,6|||101,4|||");
  data.ask({{"type", "1"}, {"prikeyid", id}});
  EXPECT_EQ(save(data), kSaved);
  EXPECT_EQ(data.rows("select Query_Name,Query_Static,Query_MultiRel,Query_MultiRelSel,"
                      "Query_HasStatic,Zembra_ModiUser from Zembra_Query_Main"),
            "it's,102,6|||101,4,1,6,1,1");
  // Keeping its own name is allowed; a change without statistics writes the relations.
  data.ask("step3Stats", "");
  EXPECT_EQ(save(data), kSaved);
  EXPECT_EQ(data.rows("select Query_MultiRel,Query_MultiRelSel,Query_HasStatic from "
                      "Zembra_Query_Main"),
            "0,5,0");
}

TEST(SaveStatement, DoublesTheGroupingsQuotesInInsertsOnly) {
  SchemeRow row;
  row.definition.grouping = "a'b";
  for (const bool hasStatistics : {false, true}) {
    row.definition.statistics = hasStatistics ? "1,4" : "";
    row.isChange = true;
    EXPECT_TRUE(holds(saveStatement(row), "Query_Group='a'b'"));
    row.isChange = false;
    EXPECT_TRUE(holds(saveStatement(row), "'a''b'"));
    EXPECT_EQ(holds(saveStatement(row), "Query_HasStatic"), hasStatistics);
  }
}

TEST(SaveForm, ShowsWhatIsStored) {
  WizardDatabase data;
  data.ask("prikeyid", data.addScheme("it''s", "Query_Desc,Query_System,Query_Dic", "'a<b',1,1"));
  expectGolden("save_form.html", data.writtenBy([&] { addSearchDlg6(data.page()); }));
}

}  // namespace
}  // namespace tarlo::scheme
