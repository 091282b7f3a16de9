#include "scheme/operations.h"

#include <gtest/gtest.h>

#include "support/golden_page.h"
#include "support/wizard_support.h"

namespace tarlo::scheme {
namespace {

using namespace tarlo::testing;

std::string step(WizardDatabase& data) {
  return data.writtenBy([&] { addSearchDlg1(data.page()); });
}

TEST(RelationStep, OffersTheRelationsOfTheTableOrOfItsNeighbours) {
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"10", "0", "where DDR_MainTableID=10 or DDR_RelationTableID=10"},
      {"10", "", "where DDR_MainTableID=10 or DDR_RelationTableID=10"},
      // The neighbour of Orders is Customer, whose relations are these.
      {"10", "1", "where Zembra_ID in (5,6,7)"},
      // Both neighbours of Customer have one relation with it and nothing else.
      {"11", "1", "where Zembra_ID in (5,6,7)"},
      {"99", "1", "where Zembra_ID in (-1)"},
  };
  for (const auto& [table, mul, condition] : rows) {
    WizardDatabase data;
    data.ask({{"sTable", table}, {"mul", mul}});
    const std::string sql = between(step(data), "where ", ">\r\n");
    EXPECT_EQ(sql, condition) << table << " " << mul;
  }
}

TEST(RelationStep, ARelationBetweenTwoNeighboursComesTwice) {
  WizardDatabase data;
  data.execute(
      "insert into Zembra_DataDict_Relation (DDR_MainTableID,DDR_MainFieldID,"
      "DDR_RelationTableID,DDR_RelationFieldID) values (10,103,12,120)");
  data.ask({{"sTable", "10"}, {"mul", "1"}});
  EXPECT_TRUE(holds(step(data), "in (5,6,7,7,8)"));
}

TEST(RelationStep, RestoresWhatIsStillThere) {
  WizardDatabase data;
  data.execute(
      "update Zembra_DataDict_Relation set DDR_MainTableName='Order',DDR_MainFieldName='Cust',"
      "DDR_RelationTableName='Client',DDR_RelationFieldName='Key'");
  data.ask({{"sTable", "10"}, {"type", "1"}});
  data.ask("prikeyid", data.addScheme("s", "Query_MultiRelSel,Query_Rel,Query_Static",
                                      "' 5,77,7 ','101,1,1,-1','101,4'"));
  tarlo::testing::expectGolden("relation_step.html", between(step(data), "<html", "function"));
}

TEST(RelationStep, TheStepsInUseAreChecked) {
  const std::pair<std::string, std::string> rows[] = {{"'N:1','',''", "1"},
                                                      {"'','101,1,1,-1','101,4'", "2,5"},
                                                      {"'N:1',' ',null", "1"},
                                                      {"'N:1','101,1,1,-1','101,4'", "1,2,5"},
                                                      {"null,null,null", ""}};
  for (const auto& [values, checked] : rows) {
    WizardDatabase data;
    data.ask({{"type", "1"},
              {"prikeyid", data.addScheme("s", "Query_Vir,Query_Rel,Query_Static", values)}});
    const std::string page = step(data);
    EXPECT_TRUE(holds(page, "defaultValue=\"" + checked + "\"")) << values;
    EXPECT_TRUE(holds(page, "var MulRel='';")) << values;
  }
}

}  // namespace
}  // namespace tarlo::scheme
